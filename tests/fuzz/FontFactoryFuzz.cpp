// Feeds arbitrary bytes to the font factory. Whatever it accepts must lie
// wholly inside the input, its glyph table must tile the strip, and drawing
// every glyph must stay inside the strip and the buffer.
#include "gadu/FontFactory.h"
#include "gadu/MemoryRenderingBuffer.h"
#include "tests/fuzz/FuzzCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto font = gadu::FontFactory::use_instance().create_from_bytes(data, size);
    if (font == nullptr)
    {
        return 0;
    }
    std::int64_t next = 0;
    for (const auto& glyph : font->use_glyphs())
    {
        zq_test::require(glyph.x_start == next && glyph.width > 0);
        next += glyph.width;
    }
    zq_test::require(next == (font->get_height() > 0 ? font->get_width() : 0));
    gadu::MemoryRenderingBuffer buffer(16, 14);
    const std::int32_t x = static_cast<std::int32_t>(data[size - 1] % 24) - 4;
    for (const auto& glyph : font->use_glyphs())
    {
        font->draw_glyph_area(gadu::Rect{glyph.x_start, 0, glyph.x_start + glyph.width, font->get_glyph_height()}, x,
                              1, buffer, 0x00FF8040u);
    }
    return 0;
}
