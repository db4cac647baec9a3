#pragma once

#include "MouseScript.h"

namespace vsthost
{

// Plays the mouse actions of a script into an editor as the window system's
// own messages, posted to the deepest visible child window under the point
// (or to the window that holds the mouse capture, as the system does), with
// the button state a real mouse would give. The caller delivers them by
// pumping messages; waits are the caller's business too.
//
// Following the cursor, the player also places the system's cursor, and a
// move goes by the script's distance from where the cursor is now: an editor
// that warps the cursor back during an endless drag then sees what a physical
// mouse gives. Buttons always act at the script's point.
class MousePlayer
{
public:
    // window: the host's top-level window, whose client area the script's
    // coordinates are in.
    MousePlayer(void* window, bool follow_cursor) : _window(window), _follow_cursor(follow_cursor) {}

    void play(const MouseScript::Step& step);

private:
    void post_button(unsigned message, int x, int y);
    void post_at(unsigned message, int x, int y, unsigned extra_state);
    unsigned get_key_state() const;
    void move(int x, int y);
    void place_cursor(int x, int y);

    void* _window;
    bool _follow_cursor;
    // The script's last point, from which a followed move's distance counts.
    int _script_x = 0;
    int _script_y = 0;
    bool _left = false;
    bool _right = false;
};

}  // namespace vsthost
