#pragma once

#include "gadu/Rect.h"

#include <cstdint>

namespace gadu
{

// The editor drawn larger for dense screens: every content pixel becomes a
// factor x factor block of platform pixels, so the artwork stays crisp, and a
// platform position maps back to the content pixel whose block holds it.
class Zoom
{
public:
    static constexpr std::int32_t kLargest = 3;

    // Factors below 1 would divide by zero or mirror the editor: they count as
    // 1. Above kLargest nobody asked for them, but they stay exact.
    explicit Zoom(std::int32_t factor = 1) : _factor(factor < 1 ? 1 : factor) {}

    std::int32_t get_factor() const { return _factor; }

    // Floor division: a pointer left of or above the window (a drag past its
    // edge) lands on the content pixel whose block holds it, not on pixel 0.
    std::int32_t to_content(std::int32_t platform) const;
    std::int32_t to_platform(std::int32_t content) const { return content * _factor; }
    Rect to_platform(const Rect& content) const;
    // The smallest content rectangle whose blocks cover the platform rectangle.
    Rect covering(const Rect& platform) const;

    // Writes width x height pixels of 4 bytes from src as blocks into dst (row
    // strides in bytes), which holds width x factor by height x factor pixels.
    void expand(const std::uint8_t* src, std::int32_t src_stride, std::int32_t width, std::int32_t height,
                std::uint8_t* dst, std::int32_t dst_stride) const;

private:
    std::int32_t _factor;
};

}  // namespace gadu
