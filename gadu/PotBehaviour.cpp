#include "gadu/PotBehaviour.h"

#include "gadu/ControlInterface.h"
#include "gadu/MouseCompatibility.h"
#include "gadu/MouseMessage.h"
#include "gadu/TimerMessage.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace gadu
{

namespace
{

constexpr double kPi = 3.14159265358979323846;
// The hysteresis of the direction: mostly horizontal motion (at most 22.5
// degrees off) turns the fine mode on, mostly vertical motion (at least 67.5
// degrees) turns it off; in between the mode stays.
constexpr double kFineOn = kPi / 8.0;
constexpr double kFineOff = 3.0 * kPi / 8.0;
// How much of each new motion the smoothed motion takes.
constexpr float kMotionFollow = 0.9f;
// Snapping searches start from a distance larger than any value can have.
constexpr double kFar = 999999.0;

// A clock that stepped back (two clocks a hair apart) must not run the
// smoothing or the jog backwards.
double elapsed(double now, double last)
{
    return std::max(0.0, now - last);
}

}  // namespace

bool PotBehaviour::start_drag(double now)
{
    const bool endless = MouseCompatibility::use_instance().get_mode() == MouseCompatibility::kEndlessDrag;
    if (!start(drag, endless ? capture_mode::relative : capture_mode::plain, now))
    {
        return false;
    }
    _absolute = !endless;
    _raw = _owner.get_value();
    _target = _raw;
    _direction = kVertical;
    _travel = 0;
    _jog_speed = 0.0;
    _first_move = true;
    return true;
}

// A jog keeps the cursor visible and where it is: the user steers the speed
// by how far the pointer moves sideways from the press.
bool PotBehaviour::start_jog(double now)
{
    return start(jog, capture_mode::plain, now);
}

bool PotBehaviour::start(State state, std::int32_t mode, double now)
{
    clear_timer();
    release_capture();
    if (_owner.handle_message(MouseCapture(&_owner, mode)) != 0)
    {
        stop();
        return false;
    }
    _holds_capture = true;
    _last_time = now;
    std::uint32_t id = kNoTimer;
    if (_owner.handle_message(SetTimer(&_owner, kTimerPeriod, id)) != 0)
    {
        stop();
        return false;
    }
    _timer_id = id;
    _state = state;
    return true;
}

void PotBehaviour::stop()
{
    clear_timer();
    release_capture();
    _state = idle;
    _first_move = false;
    _speed_by_mouse = false;
    _jog_speed = 0.0;
    _requested_speed = 0.0;
}

void PotBehaviour::clear_timer()
{
    if (_timer_id != kNoTimer)
    {
        _owner.handle_message(ClearTimer(_timer_id));
        _timer_id = kNoTimer;
    }
}

void PotBehaviour::release_capture()
{
    if (!_holds_capture)
    {
        return;
    }
    _holds_capture = false;
    if (_release_position_set)
    {
        _owner.handle_message(MouseRelease(&_owner, _release_x, _release_y));
    }
    else
    {
        _owner.handle_message(MouseRelease(&_owner));
    }
}

void PotBehaviour::set_release_position(std::int32_t x, std::int32_t y)
{
    _release_position_set = true;
    _release_x = x;
    _release_y = y;
}

void PotBehaviour::set_range_lock(bool on, double low, double high)
{
    _range_locked = on;
    _range_low = std::min(low, high);
    _range_high = std::max(low, high);
}

void PotBehaviour::drag_step(std::int32_t a, std::int32_t b, float fine_factor, std::int32_t pixels_per_range,
                             double now)
{
    if (_state != drag)
    {
        return;
    }
    if (_first_move)
    {
        _last_a = a;
        _last_b = b;
        _first_move = false;
        if (a == 0 && b == 0)
        {
            return;
        }
    }
    // Wide, so that positions at the ends of the 32-bit range cannot overflow.
    std::int64_t da = a;
    std::int64_t db = b;
    if (_absolute)
    {
        da -= _last_a;
        db -= _last_b;
        _last_a = a;
        _last_b = b;
    }
    _motion_a += (static_cast<float>(std::llabs(da)) - _motion_a) * kMotionFollow;
    _motion_b += (static_cast<float>(std::llabs(db)) - _motion_b) * kMotionFollow;
    const double angle = std::fabs(_motion_b) < 1e-9 ? kPi : std::atan(_motion_a / _motion_b);
    if (_direction == kHorizontalFine && angle >= kFineOff)
    {
        _direction = kVertical;
        _travel = 0;
    }
    else if (_direction == kVertical && angle <= kFineOn)
    {
        _direction = kHorizontalFine;
    }

    double step = static_cast<double>(da);
    if (_direction == kHorizontalFine)
    {
        step = static_cast<double>(db) * fine_factor;
        const bool was_near = _travel <= kMagnetTravel;
        // Only whether the travel passed the limit matters; capping it keeps
        // an endless sideways drag from overflowing the counter.
        _travel = static_cast<std::int32_t>(std::min<std::int64_t>(_travel + std::llabs(db), kMagnetTravel + 1));
        if (was_near && _travel > kMagnetTravel)
        {
            _raw = _target;
        }
    }
    step /= pixels_per_range;

    // Past an end, turning back starts from that end at once: no dead zone
    // for the distance the pointer overshot.
    if (_raw > 1.0 && step < 0.0)
    {
        _raw = 1.0 + step;
    }
    else if (_raw < 0.0 && step > 0.0)
    {
        _raw = step;
    }
    else
    {
        _raw += step;
    }

    if (_travel <= kMagnetTravel)
    {
        snap_target();
    }
    else
    {
        _target = _raw;
    }
    double value = _owner.get_value();
    if (smooth(now, value))
    {
        apply(value, kLevelHeld);
    }
}

void PotBehaviour::snap_target()
{
    if (_magnets.empty())
    {
        _target = _raw;
        return;
    }
    const double raw = std::clamp(_raw, 0.0, 1.0);
    const bool target_inside = _target >= 0.0 && _target <= 1.0;
    double candidate = target_inside ? _target : -1.0;
    const double current = target_inside ? std::fabs(raw - _target) : kFar;
    double best = kFar;
    for (double magnet : _magnets)
    {
        const double distance = std::fabs(raw - magnet);
        if (distance < best && 3.0 * distance < current)
        {
            candidate = magnet;
            best = distance;
        }
    }
    _target = candidate;
}

// Moves the value a part of the way to the target that grows with the time
// since the last step (3 Hz by default). When the distance shrinks faster
// than the smoothing would (the target came back towards the value), the
// frequency grows in proportion, so that the value never lags a reversal.
bool PotBehaviour::smooth(double now, double& value)
{
    const double diff = _target - value;
    const double distance = std::fabs(diff);
    double next = _target;
    if (distance > 1e-6)
    {
        double hz = _smoothing_hz;
        if (distance >= 1e-9 && 1.5 * distance < _last_distance)
        {
            hz *= _last_distance / distance;
        }
        next = value + (1.0 - std::exp(-2.0 * kPi * hz * elapsed(now, _last_time))) * diff;
    }
    next = std::clamp(next, 0.0, 1.0);
    _last_distance = distance;
    _last_time = now;
    const bool changed = next != value;
    value = next;
    return changed;
}

void PotBehaviour::request_jog_speed(double speed, bool by_mouse)
{
    _requested_speed = speed;
    _speed_by_mouse = _speed_by_mouse || by_mouse;
}

// The speed eases towards the requested one: slowly while the user holds the
// pot (so that a held jog starts gently), quickly when it stops. A speed the
// pointer set is taken at once and kept, so the pot runs on after the release
// until it reaches an end.
bool PotBehaviour::jog_step(double now, double& value)
{
    const double dt = elapsed(now, _last_time);
    const double wanted = _requested_speed;
    if (std::fabs(_jog_speed) < 1e-6 && std::fabs(8.0 * wanted) < 1e-9)
    {
        _jog_speed = 0.0;
    }
    if (!_speed_by_mouse)
    {
        const double divisor = std::fabs(wanted) < 1e-9 ? 1.0 : 64.0;
        const double old = _jog_speed;
        const double eased = old + (8.0 * wanted - 8.0 * old) * dt / divisor;
        _jog_speed = std::clamp(eased, std::min(old, wanted), std::max(old, wanted));
    }
    else if (std::fabs(wanted) >= 1e-9)
    {
        _jog_speed = wanted;
    }
    const double low = _range_locked ? _range_low : 0.0;
    const double high = _range_locked ? _range_high : 1.0;
    double next = value + dt * _jog_speed;
    if (next < low || next > high)
    {
        _jog_speed = 0.0;
        next = std::clamp(next, low, high);
    }
    _last_time = now;
    const bool changed = next != value;
    value = next;
    return changed;
}

void PotBehaviour::tick(double now, bool button_down)
{
    if (_state == idle)
    {
        return;
    }
    if (button_down)
    {
        _owner.touch(kLevelHeld);
    }
    else
    {
        // A jog asks for no speed once the button is up; a speed the pointer
        // set runs on regardless.
        _requested_speed = 0.0;
    }
    double value = _owner.get_value();
    const bool changed = _state == drag ? smooth(now, value) : jog_step(now, value);
    if (changed)
    {
        apply(value, button_down || _speed_by_mouse ? kLevelHeld : kLevelTail);
    }
    else if (!button_down)
    {
        stop();
    }
}

void PotBehaviour::apply(double value, std::int32_t level)
{
    if (!_owner.set_value(value, level))
    {
        stop();
    }
}

}  // namespace gadu
