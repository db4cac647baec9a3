#include "gadu/MulticolorFont.h"

namespace gadu
{

void MulticolorFont::draw_glyph_area(const Rect& source, std::int32_t x, std::int32_t y,
                                     RenderingBufferInterface& buffer, std::uint32_t) const
{
    for_each_glyph_pixel(source, x, y, buffer, [this](const std::uint8_t* px, std::uint8_t* d) {
        const std::uint8_t* p = _palette + 4 * px[0];
        const int weight = 255 - px[1];
        for (int c = 0; c < 3; ++c)
        {
            d[c] = towards(p[c], d[c], weight);
        }
    });
}

}  // namespace gadu
