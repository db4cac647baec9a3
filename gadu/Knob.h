#pragma once

#include "gadu/HighlightMixin.h"
#include "gadu/Picture.h"
#include "gadu/PresentPicture.h"
#include "gadu/PotBehaviour.h"
#include "gadu/PotInterface.h"

#include <array>
#include <cstdint>
#include <vector>

namespace gadu
{

class ControlPainter;

// A rotary control: its body picture turns with the value about its hot spot,
// which sits on the knob's position (the knob's centre). Dragging turns it
// (upwards increases; mostly sideways motion is fine adjustment), a press in
// one of the lower corner triangles jogs it down or up while held, and a
// double click restores the default value. Angles are in turns, positive
// counter-clockwise; the default range runs clockwise over 270 degrees.
class Knob : public PotInterface, public virtual HighlightMixin
{
public:
    // The optional pictures, by their bit in the picture flags.
    enum PictureSlot : std::uint8_t
    {
        body = 1,
        background = 2,
        foreground = 4,
        drag_pointer = 8,
        shadow = 16,
        overlay = 32
    };

    Knob();
    ~Knob() override;

    PotBehaviour& use_behaviour() override { return _behaviour; }
    const PotBehaviour& use_behaviour() const override { return _behaviour; }

    // Configuration.
    void set_picture(PictureSlot slot, const Picture& picture);
    void clear_picture(PictureSlot slot);
    void set_body_picture(const Picture& picture) { set_picture(body, picture); }
    void set_drag_pointer_picture(const Picture& picture) { set_picture(drag_pointer, picture); }
    std::uint8_t get_picture_flags() const { return _picture_flags; }
    // The layer list gets that many empty entries; at least one.
    void set_layer_count(std::int32_t count);
    // A layer is an alternative frame that the angle picks.
    void set_layer_picture(std::int32_t layer, const Picture& picture);
    void set_layer_phase(float turns) { _layer_phase = turns; }
    void set_layer_span(float turns);
    // Vertical drag distance for the whole range; not 0.
    void set_pixels_per_range(std::int32_t pixels);
    void set_fine_factor(float factor) { _fine_factor = factor; }
    void set_angle(float offset_turns, float span_turns);
    void set_pointer_radius(float pixels) { _pointer_radius = pixels; }
    void set_jog_speed(float range_per_second) { _jog_speed = range_per_second; }
    void set_shadow_offset(float x, float y);
    void set_rotate_body(bool on) { _rotate_body = on; }
    void set_opacity(float opacity);

    std::int32_t get_pixels_per_range() const { return _pixels_per_range; }
    float get_fine_factor() const { return _fine_factor; }
    float get_angle_offset() const { return _angle_offset; }
    float get_angle_span() const { return _angle_span; }
    float get_opacity() const { return _opacity; }
    // Radians, counter-clockwise on the screen.
    double get_angle() const;
    // -1 or +1 for a press at the point (window pixels) in a lower corner
    // triangle (towards lower or higher values), 0 elsewhere.
    std::int32_t get_jog_direction(std::int32_t x, std::int32_t y) const;
    bool is_button_down() const { return _button_down; }
    bool shows_drag_pointer() const;

    void on_hide() override;
    std::int32_t invalidate_self() override;
    std::int32_t on_redraw(const Redraw& message) override;
    std::int32_t on_mouse_click(const MouseClick& message) override;
    std::int32_t on_mouse_move(const MouseMove& message) override;
    std::int32_t on_mouse_capture_lost(const MouseCaptureLost& message) override;
    std::int32_t on_notify(const Notify& message) override;

private:
    std::int32_t press(const MouseClick& message);
    std::int32_t release_button();
    const Picture& use_picture(PictureSlot slot) const;
    bool has_picture(PictureSlot slot) const { return (_picture_flags & slot) != 0; }
    void draw_layer(const ControlPainter& painter, double angle) const;
    // Redraws when the drag pointer appeared or went.
    void follow_pointer(bool was_shown);

    static constexpr std::size_t kSlots = 6;

    std::array<Picture, kSlots> _pictures;
    std::uint8_t _picture_flags = 0;
    std::vector<PresentPicture> _layers;
    float _layer_phase = 0.0f;
    float _layer_span = 1.0f;
    float _fine_factor = 0.0f;
    float _angle_offset = 0.625f;
    float _angle_span = -0.75f;
    float _pointer_radius = 0.0f;
    float _jog_speed = 1.0f;
    float _shadow_x = 0.0f;
    float _shadow_y = 0.0f;
    std::int32_t _pixels_per_range = 200;
    bool _rotate_body = false;
    float _opacity = 1.0f;
    std::int32_t _press_x = 0;
    std::int32_t _press_y = 0;
    bool _released = true;
    bool _button_down = false;
    PotBehaviour _behaviour;
};

}  // namespace gadu
