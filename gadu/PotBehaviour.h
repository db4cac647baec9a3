#pragma once

#include <cstdint>
#include <vector>

namespace gadu
{

class ControlInterface;

// The mouse physics of a pot. A drag (state 1) accumulates pointer motion
// into a raw value that may run past the ends, and the shown value follows it
// smoothly; mostly horizontal motion switches to a fine mode. A jog (state 2)
// turns the pot at a speed while the button is held. Both run a timer for the
// whole gesture and its smoothing tail. Times are the toolkit's clock in
// seconds; values are normalized.
class PotBehaviour
{
public:
    enum State : std::int32_t
    {
        idle = 0,
        drag = 1,
        jog = 2
    };

    // Direction modes of a drag.
    static constexpr std::int32_t kVertical = 0;
    static constexpr std::int32_t kHorizontalFine = 1;

    static constexpr float kTimerPeriod = 0.03f;
    // Priority levels of the changes a pot makes: while the user holds it,
    // for the smoothing tail after the release, and for a reset.
    static constexpr std::int32_t kLevelHeld = 200;
    static constexpr std::int32_t kLevelTail = 50;
    static constexpr std::int32_t kLevelReset = 1;

    explicit PotBehaviour(ControlInterface& owner) : _owner(owner) {}
    virtual ~PotBehaviour() = default;
    PotBehaviour(const PotBehaviour&) = delete;
    PotBehaviour& operator=(const PotBehaviour&) = delete;

    // Each answers whether the gesture runs: it does not when the window
    // refuses the capture or the timer.
    bool start_drag(double now);
    bool start_jog(double now);
    // Back to idle: the timer cleared, the capture let go, the flags reset.
    void stop();

    // One pointer motion of a drag: a is up (positive upwards), b to the
    // right; motion in the endless drag, positions in the plain capture.
    void drag_step(std::int32_t a, std::int32_t b, float fine_factor, std::int32_t pixels_per_range, double now);
    // The speed a jog asks for (range per second); by_mouse says that the
    // pointer set it, which keeps it beyond the release.
    void request_jog_speed(double speed, bool by_mouse);
    // One timer tick; button_down says whether the user still holds the pot.
    void tick(double now, bool button_down);
    // The button went up: the capture is let go, the timer runs on.
    void release_capture();
    // The window took the capture away.
    void forget_capture() { _holds_capture = false; }

    // Where the cursor goes when the capture is let go, instead of where the
    // drag started.
    void set_release_position(std::int32_t x, std::int32_t y);
    // Bounds of the jog instead of 0 and 1.
    void set_range_lock(bool on, double low = 0.0, double high = 1.0);
    // Values a drag snaps to while it has moved only a little.
    void set_magnets(std::vector<double> magnets) { _magnets = std::move(magnets); }

    State get_state() const { return _state; }
    double get_raw_value() const { return _raw; }
    double get_target() const { return _target; }
    std::int32_t get_direction_mode() const { return _direction; }
    double get_jog_speed() const { return _jog_speed; }
    bool holds_capture() const { return _holds_capture; }
    bool is_jog_speed_by_mouse() const { return _speed_by_mouse; }
    bool is_timer(std::uint32_t timer_id) const { return _timer_id != kNoTimer && _timer_id == timer_id; }

    // One smoothing step of the shown value towards the target, and one jog
    // step; each answers the new value and whether it changed.
    bool smooth(double now, double& value);
    bool jog_step(double now, double& value);

private:
    bool start(State state, std::int32_t capture_mode, double now);
    void clear_timer();
    void snap_target();
    // Hands a change to the pot; a refusal ends the gesture.
    void apply(double value, std::int32_t level);

    static constexpr std::uint32_t kNoTimer = 0xFFFFFFFFu;
    // The travel of a fine drag before it leaves the magnets behind.
    static constexpr std::int32_t kMagnetTravel = 16;

    ControlInterface& _owner;
    State _state = idle;
    double _raw = 0.0;
    double _target = 0.0;
    double _last_distance = 0.0;
    double _smoothing_hz = 3.0;
    std::int32_t _direction = kVertical;
    float _motion_a = 0.0f;
    float _motion_b = 0.0f;
    std::int32_t _travel = 0;
    bool _first_move = false;
    std::int32_t _last_a = 0;
    std::int32_t _last_b = 0;
    bool _absolute = false;
    double _jog_speed = 0.0;
    double _requested_speed = 0.0;
    bool _speed_by_mouse = false;
    double _last_time = 0.0;
    std::uint32_t _timer_id = kNoTimer;
    bool _holds_capture = false;
    bool _range_locked = false;
    double _range_low = 0.0;
    double _range_high = 1.0;
    std::vector<double> _magnets;
    bool _release_position_set = false;
    std::int32_t _release_x = 0;
    std::int32_t _release_y = 0;
};

}  // namespace gadu
