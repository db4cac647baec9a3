// artsheet: the contact sheet of the editor's artwork, composed through the
// GUI toolkit from the embedded resources: the editor screen (a knob being
// dragged, the switch on), the large knob across its range, both switch
// states and two lines of the font.
//
//   artsheet OUTPUT.png
//
// Every run writes the same bytes.
#include "EditorScreen.h"
#include "Layout.h"
#include "Preview.h"

#include <cstdio>
#include <exception>

namespace
{

constexpr std::uint32_t white = 0x00FFFFFF;
constexpr std::uint32_t black = 0x00000000;
constexpr std::int32_t band_height = 132;

void draw_band(const artgen::EditorScreen& screen, gadu::MemoryRenderingBuffer& buffer, std::int32_t top)
{
    for (std::int32_t x = 0; x < buffer.get_width(); ++x)
    {
        buffer.set_pixel(x, top, black);
    }
    // The large knob from 0 to 1 in quarter steps.
    for (int i = 0; i <= 4; ++i)
    {
        screen.draw_knob(buffer, 0, i / 4.0, 44 + 76 * i, top + 44);
    }
    screen.draw_switch(buffer, 0, 420, top + 10);
    screen.draw_switch(buffer, 1, 420 + artgen::switch_on_shift, top + 44);
    screen.draw_text(buffer, "Zarquette par Velnor - Bof, Gauloises, Oignons, Vin Rouge, Nuclear Power", 12,
                     top + 88, black);
    screen.draw_text(buffer,
                     "\xC0\xC2\xC7\xC9\xC8\xCA\xCB\xCE\xCF\xD4\xD9\xDB\xDC \xE0\xE2\xE7\xE9\xE8\xEA\xEB\xEE\xEF\xF4"
                     "\xF9\xFB\xFC\xFF \xC6\xE6 \xAB 0123456789 !?&@#%*+=/ \xBB",
                     12, top + 106, black);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fprintf(stderr, "usage: artsheet OUTPUT.png\n");
        return 2;
    }
    try
    {
        const artgen::EditorScreen screen;
        gadu::MemoryRenderingBuffer buffer(artgen::screen_width, artgen::screen_height + band_height);
        buffer.fill(white);
        const double values[4] = {0.5, 0.8, 0.3, 1.0};
        screen.draw(buffer, 0, 0, values, 1, 0);
        draw_band(screen, buffer, artgen::screen_height);
        const artgen::Preview sheet =
            artgen::Preview::from_bgrx(buffer.get_width(), buffer.get_height(), buffer.pixels());
        if (!sheet.write_png(argv[1]))
        {
            std::fprintf(stderr, "artsheet: cannot write %s\n", argv[1]);
            return 1;
        }
        return 0;
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "artsheet: %s\n", e.what());
        return 1;
    }
}
