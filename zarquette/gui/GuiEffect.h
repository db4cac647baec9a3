#pragma once

#include "gadu/FlipFlop.h"
#include "gadu/Knob.h"
#include "zarquette/gui/GuiPart.h"
#include "zarquette/gui/LearnListener.h"

#include <array>

namespace gadu
{
class CtrlGroupItem;
}

namespace zarquette
{

// The effect's face: four knobs and the "Nuclear Power" switch, each bound to
// its parameter. "Tempo" has no control here.
class GuiEffect : public GuiPart
{
public:
    static constexpr int nbr_knobs = 4;
    // The highlight state that shows a control's MIDI learn marker.
    static constexpr std::int32_t learn_marker = 0;
    // Where the marker's ink comes from in the background picture.
    static const gadu::Rect marker_source;

    // Where a control sits, what it shows and what it drives. A knob's
    // position is its centre, the switch's its top-left corner.
    struct Placement
    {
        const char* picture;
        std::int32_t x, y;
        gadu::Rect hit;
        int param;
        float angle_offset;
    };
    static const std::array<Placement, nbr_knobs> knob_places;
    static const Placement switch_place;

    explicit GuiEffect(ZarquetteGui& editor) : GuiPart(editor) {}

    // False when a picture is missing.
    bool set_up(gadu::CtrlGroupItem& group);

    gadu::Knob& use_knob(int k) { return _knobs[static_cast<std::size_t>(k)].control; }
    gadu::FlipFlop& use_switch() { return _switch.control; }

private:
    template <typename Control>
    struct Pair
    {
        LearnListener listener;
        Control control;
    };

    bool set_up_knob(Pair<gadu::Knob>& pair, const Placement& place);
    bool set_up_switch();
    // The marker, a small black square, sits in the top-right corner of the
    // hit rectangle: inside the region the control redraws, beside the
    // knobs' round bodies.
    bool set_up_marker(gadu::ControlInterface& control, gadu::HighlightInterface& pictures, const gadu::Rect& hit);
    template <typename Control>
    void bind(Pair<Control>& pair, const Placement& place, gadu::CtrlGroupItem& group);

    std::array<Pair<gadu::Knob>, nbr_knobs> _knobs;
    Pair<gadu::FlipFlop> _switch;
};

}  // namespace zarquette
