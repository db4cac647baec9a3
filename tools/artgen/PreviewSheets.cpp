#include "PreviewSheets.h"

#include "Apic.h"
#include "Artwork.h"

namespace artgen
{

Preview editor_screen(const ArtworkSet& set, const double (&knob_values)[4], int switch_state)
{
    Preview screen = Preview::decode(set.get("BKG").bytes);
    for (int i = 0; i < 4; ++i)
    {
        const KnobLayout& k = knob_layouts[i];
        // The toolkit turns the body by (value x span + offset) turns.
        const double turns = knob_values[i] * knob_angle_span + k.angle_offset;
        const Preview body = Preview::decode(apic::encode_alpha(artwork::knob(k, 360.0 * turns)));
        screen.compose(body, k.centre_x - k.hot_x, k.centre_y - k.hot_y);
    }
    const Preview slider = Preview::decode(set.get(switch_state == 0 ? "FF_01_00" : "FF_01_01").bytes);
    screen.compose(slider, switch_x + (switch_state == 0 ? 0 : switch_on_shift), switch_y);
    return screen;
}

Preview font_sheet(const ArtworkSet& set, int scale)
{
    const Preview strip = Preview::decode(set.get("FONT_03").bytes);
    // Glyph extents come from the strip's bottom row, as the toolkit finds them.
    std::vector<int> starts{0};
    const int last_row = strip.get_height() - 1;
    for (int x = 1; x < strip.get_width(); ++x)
    {
        if (strip.pixel(x, last_row)[0] != strip.pixel(starts.back(), last_row)[0])
        {
            starts.push_back(x);
        }
    }
    starts.push_back(strip.get_width());
    const int cell_w = 10, cell_h = 14;
    Preview sheet(16 * cell_w, 16 * cell_h);
    for (std::size_t g = 0; g + 1 < starts.size(); ++g)
    {
        const int cx = static_cast<int>(g % 16) * cell_w + 1, cy = static_cast<int>(g / 16) * cell_h + 1;
        for (int y = 0; y < last_row; ++y)
        {
            for (int x = starts[g]; x < starts[g + 1]; ++x)
            {
                // Grey shows the cell, black the ink.
                sheet.set_grey(cx + x - starts[g], cy + y, strip.pixel(x, y)[0] < 128 ? 0 : 225);
            }
        }
    }
    return sheet.scaled(scale);
}

}  // namespace artgen
