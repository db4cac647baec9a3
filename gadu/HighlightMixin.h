#pragma once

#include "gadu/HighlightInterface.h"
#include "gadu/Picture.h"

#include <array>
#include <cstdint>

namespace gadu
{

// The store behind HighlightInterface: one picture per state and a mask of
// the states that have one. States outside 0 to 31 have no bit in the mask:
// setting one is ignored and asking for one answers the empty picture.
class HighlightMixin : public HighlightInterface
{
public:
    static constexpr std::int32_t kStateCount = 32;

    void set_highlight_picture(std::int32_t state, const Picture& picture) override;
    void clear_highlight_picture(std::int32_t state) override;
    bool has_highlight_picture(std::int32_t state) const override;
    const Picture& use_highlight_picture(std::int32_t state) const override;

    std::uint32_t get_highlight_mask() const { return _mask; }

private:
    static bool is_state(std::int32_t state) { return state >= 0 && state < kStateCount; }

    std::array<Picture, kStateCount> _pictures;
    std::uint32_t _mask = 0;
};

}  // namespace gadu
