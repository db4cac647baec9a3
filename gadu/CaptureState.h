#pragma once

#include "gadu/MouseMessage.h"

#include <cstdint>

namespace gadu
{

class MessageHandlerInterface;

// Who holds the mouse and how. In the endless drag (capture_mode::relative)
// positions become motion, and the cursor is taken back to where the drag
// started now and then so that it never stops at the screen's edge. Times are
// the toolkit's clock in seconds; positions are window pixels.
class CaptureState
{
public:
    struct Point
    {
        std::int32_t x = 0;
        std::int32_t y = 0;
    };

    // The cursor goes back to the origin at most this often...
    static constexpr double kWarpInterval = 0.1;
    // ...and not before the drag has lasted this long, so that a short click
    // never moves the cursor.
    static constexpr double kWarpDelay = 0.25;

    void begin(MessageHandlerInterface* handler, std::int32_t mode, Point cursor, double now);
    void forget();

    // What a mouse event at pos delivers to the capturing handler: pos itself,
    // or in the endless drag the motion since the last event. warp is set when
    // the cursor must now be moved to the origin.
    Point deliver(Point pos, double now, bool& warp);
    // Whether deliver answers motion rather than positions.
    bool delivers_motion() const { return _handler != nullptr && _mode == capture_mode::relative; }

    // A platform whose events queue up (and may still report positions from
    // before a warp) says when the first event after the warp arrives; only
    // then do positions count from the origin again. Others move the cursor
    // at once, and the next event already starts from the origin.
    void set_deferred_warps(bool deferred) { _deferred_warps = deferred; }
    void on_warp_arrived() { _last = _origin; }

    // Whether releasing the endless drag should put the cursor somewhere.
    bool release_moves_cursor(double now) const;

    MessageHandlerInterface* use_handler() const { return _handler; }
    std::int32_t get_mode() const { return _mode; }
    Point get_origin() const { return _origin; }
    bool hides_cursor() const { return _mode == capture_mode::hidden || _mode == capture_mode::relative; }

private:
    MessageHandlerInterface* _handler = nullptr;
    std::int32_t _mode = capture_mode::plain;
    Point _origin;
    Point _last;
    double _start = 0.0;
    double _last_warp = 0.0;
    bool _deferred_warps = false;
};

}  // namespace gadu
