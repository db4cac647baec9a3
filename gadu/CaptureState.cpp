#include "gadu/CaptureState.h"

namespace gadu
{

void CaptureState::begin(MessageHandlerInterface* handler, std::int32_t mode, Point cursor, double now)
{
    _handler = handler;
    _mode = mode;
    _last = cursor;
    if (hides_cursor())
    {
        _start = now;
        _last_warp = now;
    }
    if (mode == capture_mode::relative)
    {
        _origin = cursor;
    }
}

void CaptureState::forget()
{
    _handler = nullptr;
    _mode = capture_mode::plain;
}

CaptureState::Point CaptureState::deliver(Point pos, double now, bool& warp)
{
    warp = false;
    if (_handler == nullptr || _mode != capture_mode::relative)
    {
        return pos;
    }
    const Point motion{pos.x - _last.x, pos.y - _last.y};
    _last = pos;
    if (now - _last_warp >= kWarpInterval && now - _start >= kWarpDelay)
    {
        if (!_deferred_warps)
        {
            _last = _origin;
        }
        _last_warp = now;
        warp = true;
    }
    return motion;
}

bool CaptureState::release_moves_cursor(double now) const
{
    return _mode == capture_mode::relative && now - _start >= kWarpDelay;
}

}  // namespace gadu
