#pragma once

#include "gadu/Rect.h"
#include "gadu/RenderingBufferInterface.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace gadu
{

// A bitmap font: every glyph side by side in one strip, whose bottom row marks
// where each glyph begins (it is never drawn). Glyph n draws character code n.
// The strip's pixels stay in the loaded resource.
class FontInterface
{
public:
    struct Glyph
    {
        std::int32_t width;
        std::int32_t x_start;
    };

    virtual ~FontInterface() = default;

    // Draws the source rectangle of the strip (usually one glyph: x start to x
    // start + width, 0 to the glyph height) with its top-left corner at (x, y)
    // of the buffer. colour (0x00RRGGBB) is used by fonts without colours of
    // their own.
    virtual void draw_glyph_area(const Rect& source, std::int32_t x, std::int32_t y,
                                 RenderingBufferInterface& buffer, std::uint32_t colour) const = 0;

    std::int32_t get_width() const { return _width; }
    std::int32_t get_height() const { return _height; }
    std::int32_t get_glyph_height() const { return _height > 0 ? _height - 1 : 0; }
    const std::vector<Glyph>& use_glyphs() const { return _glyphs; }

protected:
    // Builds the glyph table from the bottom row: a glyph starts at x 0 and
    // wherever the first byte of a pixel differs from the one at the start of
    // the current glyph.
    FontInterface(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, std::int32_t bytes_per_pixel);

    // Calls op(strip pixel, buffer pixel) for the source rectangle drawn at
    // (x, y). Callers pass a rectangle inside the glyph rows and a position
    // inside the buffer; one that did not would make this read or write
    // outside memory, so both are clipped here, once per call.
    template <class Op>
    void for_each_glyph_pixel(const Rect& source, std::int32_t x, std::int32_t y, RenderingBufferInterface& buffer,
                              Op op) const
    {
        const Rect area = source.intersected(Rect{0, 0, _width, get_glyph_height()})
                              .intersected(buffer.get_area_at(0, 0).moved(static_cast<std::int64_t>(source.x1) - x,
                                                                          static_cast<std::int64_t>(source.y1) - y));
        if (area.is_empty())
        {
            return;
        }
        const std::ptrdiff_t stride = static_cast<std::ptrdiff_t>(buffer.get_width()) * 4;
        for (std::int32_t sy = area.y1; sy < area.y2; ++sy)
        {
            const std::uint8_t* src = _pixels + (static_cast<std::ptrdiff_t>(sy) * _width + area.x1) * _bytes_per_pixel;
            std::uint8_t* dst = buffer.pixels() + (sy - source.y1 + y) * stride
                              + static_cast<std::ptrdiff_t>(area.x1 - source.x1 + x) * 4;
            for (std::int32_t sx = area.x1; sx < area.x2; ++sx, src += _bytes_per_pixel, dst += 4)
            {
                op(src, dst);
            }
        }
    }

    // Moves d towards s by weight/256 of the distance.
    static std::uint8_t towards(int s, int d, int weight)
    {
        return static_cast<std::uint8_t>(d + (((s - d) * weight) >> 8));
    }

    std::int32_t _width;
    std::int32_t _height;
    const std::uint8_t* _pixels;
    std::int32_t _bytes_per_pixel;
    std::vector<Glyph> _glyphs;
};

}  // namespace gadu
