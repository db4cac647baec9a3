#include "gadu/UnicolorFont.h"

namespace gadu
{

void UnicolorFont::draw_glyph_area(const Rect& source, std::int32_t x, std::int32_t y,
                                   RenderingBufferInterface& buffer, std::uint32_t colour) const
{
    // The colour in buffer byte order: blue, green, red.
    const int bgr[3] = {static_cast<int>(colour & 0xFFu), static_cast<int>(colour >> 8 & 0xFFu),
                        static_cast<int>(colour >> 16 & 0xFFu)};
    for_each_glyph_pixel(source, x, y, buffer, [&bgr](const std::uint8_t* px, std::uint8_t* d) {
        for (int c = 0; c < 3; ++c)
        {
            d[c] = towards(bgr[c], d[c], px[0]);
        }
    });
}

}  // namespace gadu
