#pragma once

#include "gadu/FontInterface.h"

namespace gadu
{

// A font of a palette index and a transparency byte per pixel (0 draws the
// palette colour, 255 leaves the buffer as it is).
class MulticolorFont : public FontInterface
{
public:
    MulticolorFont(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, const std::uint8_t* palette)
        : FontInterface(width, height, pixels, 2), _palette(palette)
    {
    }

    // The colour is not used: the font has its own.
    void draw_glyph_area(const Rect& source, std::int32_t x, std::int32_t y, RenderingBufferInterface& buffer,
                         std::uint32_t colour) const override;

    const std::uint8_t* use_palette() const { return _palette; }

private:
    const std::uint8_t* _palette;
};

}  // namespace gadu
