#pragma once

#include "gadu/ControlInterface.h"
#include "gadu/HighlightMixin.h"
#include "gadu/Picture.h"
#include "gadu/PresentPicture.h"

#include <cstdint>
#include <vector>

namespace gadu
{

// A switch of a few states (two by default): a press steps it to the other
// end, and the shown state follows over a short animation, changing its
// picture half-way through. Changes from outside animate the same way when
// they reach the drawing. The position is the switch's top-left corner.
class FlipFlop : public ControlInterface, public virtual HighlightMixin
{
public:
    // The optional pictures, by their bit in the picture flags.
    enum PictureSlot : std::uint8_t
    {
        background = 1,
        overlay = 2
    };

    FlipFlop();
    ~FlipFlop() override;

    // At least one state; the state pictures are kept where they fit.
    void set_state_count(std::int32_t count);
    std::int32_t get_state_count() const { return static_cast<std::int32_t>(_states.size()); }
    void set_state_picture(std::int32_t state, const Picture& picture);
    void set_picture(PictureSlot slot, const Picture& picture);
    void set_overlay_factor(float factor) { _overlay_factor = factor; }
    // Seconds; below a nanosecond a change shows at once.
    void set_animation_duration(double seconds) { _duration = seconds; }
    double get_animation_duration() const { return _duration; }
    void set_animate_external(bool on) { _animate_external = on; }
    void set_opacity(float opacity);

    bool is_animating() const { return _timer_id != kNoTimer; }
    double get_position() const { return _position; }
    // The state the next drawing shows.
    std::int32_t get_shown_state() const;

    void on_hide() override;
    std::int32_t on_redraw(const Redraw& message) override;
    std::int32_t on_mouse_click(const MouseClick& message) override;
    std::int32_t on_notify(const Notify& message) override;

private:
    static constexpr std::uint32_t kNoTimer = 0xFFFFFFFFu;
    static constexpr float kTimerPeriod = 0.03f;

    // Animates from the position `from` towards the value.
    void start_animation(double from);
    void stop_animation();
    bool has_picture(PictureSlot slot) const { return (_picture_flags & slot) != 0; }

    std::vector<PresentPicture> _states;
    Picture _background;
    Picture _overlay;
    std::uint8_t _picture_flags = 0;
    float _overlay_factor = 1.0f;
    double _duration = 0.1;
    double _start = 0.0;
    double _position = 0.0;
    std::uint32_t _timer_id = kNoTimer;
    double _last_drawn = 0.0;
    bool _animate_external = true;
    float _opacity = 1.0f;
};

}  // namespace gadu
