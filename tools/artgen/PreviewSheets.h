#pragma once

#include "ArtworkSet.h"
#include "Preview.h"

namespace artgen
{

// The editor screen as a user sees it: the background with every control at
// its place, the knobs at the given values (0 to 1) and the switch in a state.
// The knobs are drawn afresh at their angle rather than turned by the toolkit,
// so this quick look needs nothing but the generator and comes out of cross
// builds too; tools/artgen/sheet composes the real thing through the toolkit.
Preview editor_screen(const ArtworkSet& set, const double (&knob_values)[4], int switch_state);

// The font strip's 256 glyphs in a 16 x 16 grid, magnified.
Preview font_sheet(const ArtworkSet& set, int scale);

}  // namespace artgen
