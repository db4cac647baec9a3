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

void MousePlayer::move_hand(const MouseScript::Step& step, int& x, int& y)
{
    POINT cursor{};
    if (GetCursorPos(&cursor) && ScreenToClient(static_cast<HWND>(_window), &cursor))
    {
        x = cursor.x + step.x - _last_x;
        y = cursor.y + step.y - _last_y;
    }
    _last_x = step.x;
    _last_y = step.y;
}

unsigned MousePlayer::get_key_state() const
{
    return (_left ? MK_LBUTTON : 0u) | (_right ? MK_RBUTTON : 0u);
}

void MousePlayer::post_at(unsigned message, int x, int y, unsigned extra_state)
{
    POINT cursor{x, y};
    ClientToScreen(static_cast<HWND>(_window), &cursor);
    SetCursorPos(cursor.x, cursor.y);
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
    // The state in a button message is the state after the change.
    _left = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK ? true : message == WM_LBUTTONUP ? false : _left;
    _right = message == WM_RBUTTONDOWN ? true : message == WM_RBUTTONUP ? false : _right;
    post_at(message, x, y, 0);
}

void MousePlayer::play(const MouseScript::Step& step)
{
    using Action = MouseScript::Action;
    // What each action posts, in order; a double click is the system's
    // sequence of press, release, double-click press, release.
    static const struct
    {
        Action action;
        UINT messages[4];
    } sequences[] = {
        {Action::down, {WM_LBUTTONDOWN}},
        {Action::up, {WM_LBUTTONUP}},
        {Action::rdown, {WM_RBUTTONDOWN}},
        {Action::rup, {WM_RBUTTONUP}},
        {Action::click, {WM_LBUTTONDOWN, WM_LBUTTONUP}},
        {Action::dblclick, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}},
    };
    if (step.action == Action::move)
    {
        int x = step.x;
        int y = step.y;
        move_hand(step, x, y);
        post_at(WM_MOUSEMOVE, x, y, 0);
        return;
    }
    _last_x = step.x;
    _last_y = step.y;
    if (step.action == Action::wheel)
    {
        post_at(WM_MOUSEWHEEL, step.x, step.y,
                static_cast<unsigned>(static_cast<WORD>(static_cast<short>(step.amount))) << 16);
        return;
    }
    for (const auto& sequence : sequences)
    {
        if (sequence.action != step.action)
        {
            continue;
        }
        for (UINT message : sequence.messages)
        {
            if (message != 0)
            {
                post_button(message, step.x, step.y);
            }
        }
    }
}

}  // namespace vsthost
