#pragma once

#include "Canvas.h"
#include "Layout.h"
#include "PcfFont.h"

namespace artgen
{

// The fonts the lettering of the background is set in.
struct Lettering
{
    const PcfFont& small;   // 6 x 12: scale marks
    const PcfFont& label;   // 9 x 18 bold: control labels
    const PcfFont& title;   // 12 x 24: the product name, doubled
};

// The editor's pictures. Angles are in degrees, counter-clockwise on the screen.
namespace artwork
{

// The direction the pointer of a knob picture points in, unturned: chosen so
// that value 0 sits at the lower left and value 1 at the lower right, as on
// any hi-fi knob.
double knob_pointer_deg(const KnobLayout& k);

// A knob body with its pointer turned extra_deg away from the picture's own
// direction (0 for the resource; other angles preview a turned knob).
Canvas knob(const KnobLayout& k, double extra_deg = 0.0);
Canvas switch_state(int state);
Canvas arrow();
Canvas background(const Lettering& fonts);

}  // namespace artwork

}  // namespace artgen
