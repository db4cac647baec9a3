#include "MousePlayer.h"

#include "HostDisplayPosix.h"

#include <X11/extensions/XTest.h>

#include <cstdint>
#include <cstdlib>

namespace vsthost
{

// The script's actions become real input through the server's test
// extension: the pointer moves on the screen and the server sends the events
// to whichever window it would send a user's, with the state, grabs and times
// of real input. A double click is two quick clicks, as X11 knows it.
namespace
{

Window as_window(void* handle)
{
    return static_cast<Window>(reinterpret_cast<std::uintptr_t>(handle));
}

// The point of the host window on the root window.
void to_root(Display* display, Window window, int x, int y, int& root_x, int& root_y)
{
    Window child = 0;
    XTranslateCoordinates(display, window, DefaultRootWindow(display), x, y, &root_x, &root_y, &child);
}

constexpr unsigned kLeft = 1;
constexpr unsigned kRight = 3;

}  // namespace

void MousePlayer::move_hand(const MouseScript::Step& step, int& x, int& y)
{
    Display* display = HostDisplayPosix::use();
    Window root = 0;
    Window child = 0;
    int root_x = 0;
    int root_y = 0;
    int wx = 0;
    int wy = 0;
    unsigned state = 0;
    if (XQueryPointer(display, as_window(_window), &root, &child, &root_x, &root_y, &wx, &wy, &state))
    {
        x = wx + step.x - _last_x;
        y = wy + step.y - _last_y;
    }
    _last_x = step.x;
    _last_y = step.y;
}

void MousePlayer::post_at(unsigned /*message*/, int x, int y, unsigned /*extra_state*/)
{
    Display* display = HostDisplayPosix::use();
    int root_x = 0;
    int root_y = 0;
    to_root(display, as_window(_window), x, y, root_x, root_y);
    XTestFakeMotionEvent(display, DefaultScreen(display), root_x, root_y, CurrentTime);
    XFlush(display);
}

void MousePlayer::post_button(unsigned button, int x, int y)
{
    post_at(0, x, y, 0);
    Display* display = HostDisplayPosix::use();
    XTestFakeButtonEvent(display, button, True, CurrentTime);
    XTestFakeButtonEvent(display, button, False, CurrentTime);
    XFlush(display);
}

unsigned MousePlayer::get_key_state() const
{
    return 0;
}

void MousePlayer::play(const MouseScript::Step& step)
{
    using Action = MouseScript::Action;
    Display* display = HostDisplayPosix::use();
    if (display == nullptr)
    {
        return;
    }
    if (step.action == Action::move)
    {
        int x = step.x;
        int y = step.y;
        move_hand(step, x, y);
        post_at(0, x, y, 0);
        return;
    }
    // A button where the hand already is (the end of a drag) presses where
    // the pointer is: an editor may have put the pointer somewhere else
    // during the drag, and a jump there would be a motion of its own.
    const bool moved = step.x != _last_x || step.y != _last_y;
    _last_x = step.x;
    _last_y = step.y;
    const auto press = [&](unsigned button, bool down) {
        if (moved)
        {
            post_at(0, step.x, step.y, 0);
        }
        XTestFakeButtonEvent(display, button, down ? True : False, CurrentTime);
        XFlush(display);
    };
    switch (step.action)
    {
    case Action::down:
        press(kLeft, true);
        break;
    case Action::up:
        press(kLeft, false);
        break;
    case Action::rdown:
        press(kRight, true);
        break;
    case Action::rup:
        press(kRight, false);
        break;
    case Action::click:
        post_button(kLeft, step.x, step.y);
        break;
    case Action::dblclick:
        post_button(kLeft, step.x, step.y);
        post_button(kLeft, step.x, step.y);
        break;
    case Action::wheel:
        // One press of button 4 (away from the user) or 5 per notch of 120.
        for (int notch = 0; notch < std::abs(step.amount) / 120; ++notch)
        {
            post_button(step.amount > 0 ? 4 : 5, step.x, step.y);
        }
        break;
    default:
        break;
    }
}

}  // namespace vsthost
