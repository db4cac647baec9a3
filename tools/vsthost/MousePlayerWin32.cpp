#include "MousePlayer.h"

#include <windows.h>

namespace vsthost
{

namespace
{

// The window that gets a mouse message at a point of the host window's client
// area, and the point in that window's own client coordinates.
HWND find_target(HWND top, int x, int y, POINT& local)
{
    POINT screen{x, y};
    ClientToScreen(top, &screen);
    HWND target = GetCapture();
    if (target == nullptr)
    {
        target = top;
        for (;;)
        {
            POINT inside = screen;
            ScreenToClient(target, &inside);
            HWND child = ChildWindowFromPointEx(target, inside, CWP_SKIPINVISIBLE | CWP_SKIPTRANSPARENT);
            if (child == nullptr || child == target)
            {
                break;
            }
            target = child;
        }
    }
    local = screen;
    ScreenToClient(target, &local);
    return target;
}

LPARAM pack_point(int x, int y)
{
    return MAKELPARAM(static_cast<WORD>(static_cast<short>(x)), static_cast<WORD>(static_cast<short>(y)));
}

bool takes_double_clicks(HWND window)
{
    return (GetClassLongPtrA(window, GCL_STYLE) & CS_DBLCLKS) != 0;
}

}  // namespace

unsigned MousePlayer::get_key_state() const
{
    return (_left ? MK_LBUTTON : 0u) | (_right ? MK_RBUTTON : 0u);
}

void MousePlayer::post_at(unsigned message, int x, int y, unsigned extra_state)
{
    POINT local;
    HWND target = find_target(static_cast<HWND>(_window), x, y, local);
    const WPARAM state = get_key_state() | extra_state;
    if (message == WM_MOUSEWHEEL)
    {
        // The wheel message carries screen coordinates.
        POINT screen{x, y};
        ClientToScreen(static_cast<HWND>(_window), &screen);
        PostMessageA(target, message, state, pack_point(screen.x, screen.y));
        return;
    }
    if (message == WM_LBUTTONDBLCLK && !takes_double_clicks(target))
    {
        message = WM_LBUTTONDOWN;
    }
    PostMessageA(target, message, state, pack_point(local.x, local.y));
}

void MousePlayer::post_button(unsigned message, int x, int y)
{
    _x = x;
    _y = y;
    // The state in a button message is the state after the change.
    _left = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK ? true : message == WM_LBUTTONUP ? false : _left;
    _right = message == WM_RBUTTONDOWN ? true : message == WM_RBUTTONUP ? false : _right;
    post_at(message, x, y, 0);
}

void MousePlayer::move_to(int x, int y, int moves)
{
    const int from_x = _x;
    const int from_y = _y;
    for (int i = 1; i <= moves; ++i)
    {
        _x = from_x + (x - from_x) * i / moves;
        _y = from_y + (y - from_y) * i / moves;
        post_at(WM_MOUSEMOVE, _x, _y, 0);
    }
}

void MousePlayer::play(const MouseScript::Step& step)
{
    using Action = MouseScript::Action;
    switch (step.action)
    {
    case Action::down:
        post_button(WM_LBUTTONDOWN, step.x, step.y);
        break;
    case Action::up:
        post_button(WM_LBUTTONUP, step.x, step.y);
        break;
    case Action::rdown:
        post_button(WM_RBUTTONDOWN, step.x, step.y);
        break;
    case Action::rup:
        post_button(WM_RBUTTONUP, step.x, step.y);
        break;
    case Action::click:
        post_button(WM_LBUTTONDOWN, step.x, step.y);
        post_button(WM_LBUTTONUP, step.x, step.y);
        break;
    case Action::dblclick:
        post_button(WM_LBUTTONDOWN, step.x, step.y);
        post_button(WM_LBUTTONUP, step.x, step.y);
        post_button(WM_LBUTTONDBLCLK, step.x, step.y);
        post_button(WM_LBUTTONUP, step.x, step.y);
        break;
    case Action::move:
        move_to(step.x, step.y, step.amount);
        break;
    case Action::wheel:
        _x = step.x;
        _y = step.y;
        post_at(WM_MOUSEWHEEL, step.x, step.y, static_cast<unsigned>(static_cast<WORD>(static_cast<short>(step.amount))) << 16);
        break;
    case Action::wait:
        break;
    }
}

}  // namespace vsthost
