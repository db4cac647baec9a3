#include "zarquette/gui/GuiEffect.h"

#include "gadu/CtrlGroupItem.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace zarquette
{

const std::array<GuiEffect::Placement, GuiEffect::nbr_knobs> GuiEffect::knob_places{{
    {"kn_01_spn", 294, 226, gadu::Rect{-40, -40, 40, 40}, 1, 0.5417f},
    {"kn_02_spn", 57, 150, gadu::Rect{-24, -24, 24, 24}, 2, 0.125f},
    {"kn_03_spn", 64, 223, gadu::Rect{-24, -24, 24, 24}, 4, 0.575f},
    {"kn_04_spn", 64, 294, gadu::Rect{-32, -32, 32, 32}, 5, 0.375f},
}};

const GuiEffect::Placement GuiEffect::switch_place{"ff_01_00", 334, 74, gadu::Rect{0, 0, 39, 25}, 3, 0.0f};

bool GuiEffect::set_up(gadu::CtrlGroupItem& group)
{
    for (int k = 0; k < nbr_knobs; ++k)
    {
        Pair<gadu::Knob>& pair = _knobs[static_cast<std::size_t>(k)];
        const Placement& place = knob_places[static_cast<std::size_t>(k)];
        if (!set_up_knob(pair, place) || !set_up_marker(pair.control, pair.control, place.hit))
        {
            return false;
        }
        bind(pair, place, group);
    }
    if (!set_up_switch() || !set_up_marker(_switch.control, _switch.control, switch_place.hit))
    {
        return false;
    }
    bind(_switch, switch_place, group);
    return true;
}

bool GuiEffect::set_up_knob(Pair<gadu::Knob>& pair, const Placement& place)
{
    const ZarquetteGui& editor = use_editor();
    const gadu::Picture* body = editor.use_picture(place.picture);
    const gadu::Picture* pointer = editor.use_picture("arw_06");
    if (body == nullptr || pointer == nullptr)
    {
        return false;
    }
    gadu::Knob& knob = pair.control;
    knob.set_layer_count(1);
    knob.set_body_picture(*body);
    knob.set_drag_pointer_picture(*pointer);
    knob.set_pixels_per_range(256);
    knob.set_fine_factor(0.03125f);
    knob.set_angle(place.angle_offset, -0.75f);
    knob.set_pointer_radius(0.0f);
    knob.set_jog_speed(1.0f);
    knob.set_rotate_body(true);
    return true;
}

bool GuiEffect::set_up_switch()
{
    const ZarquetteGui& editor = use_editor();
    const int first = editor.get_picture_index(switch_place.picture);
    const gadu::Picture* off = editor.use_picture(first);
    const gadu::Picture* on = editor.use_picture(first + 1);
    if (first < 0 || off == nullptr || on == nullptr)
    {
        return false;
    }
    gadu::FlipFlop& flip = _switch.control;
    flip.set_state_count(2);
    flip.set_state_picture(0, *off);
    flip.set_state_picture(1, *on);
    flip.set_animation_duration(0.1);
    return true;
}

// The artwork has no picture of its own for the marker: it is cut from a
// solid black patch of the background (inside the cat), which keeps it in the
// screen's black-on-white ink.
const gadu::Rect GuiEffect::marker_source{405, 320, 413, 328};

bool GuiEffect::set_up_marker(gadu::ControlInterface& control, gadu::HighlightInterface& pictures, const gadu::Rect& hit)
{
    const gadu::Picture* background = use_editor().use_picture("bkg");
    if (background == nullptr)
    {
        return false;
    }
    gadu::Picture marker(*background);
    marker.set_source_rect(marker_source);
    marker.set_hot_spot(marker_source.x2 - hit.x2, marker_source.y1 - hit.y1);
    pictures.set_highlight_picture(learn_marker, marker);
    control.set_highlight_state(learn_marker, false);
    return true;
}

template <typename Control>
void GuiEffect::bind(Pair<Control>& pair, const Placement& place, gadu::CtrlGroupItem& group)
{
    pair.control.set_hit_rect(place.hit);
    pair.control.set_position(place.x, place.y);
    pair.listener.set_owner(this);
    pair.listener.set_editor(&use_editor());
    // The right button opens the learn menu instead of turning the control.
    pair.control.set_gesture_buttons(gadu::mouse_button::left | gadu::mouse_button::middle);
    use_editor().bind_control(place.param, pair.control, pair.listener);
    group.add_control(pair.control);
}

}  // namespace zarquette
