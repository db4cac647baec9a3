#pragma once

#include "MouseScript.h"

namespace vsthost
{

// Plays the mouse actions of a script into an editor as the window system's
// own messages, posted to the deepest visible child window under the point
// (or to the window that holds the mouse capture, as the system does), with
// the button state a real mouse would give. The system's cursor goes where
// each message says, and a move is the hand's motion from wherever the cursor
// is now: an editor that puts the cursor back during a drag (an endless drag)
// sees the motion a user's hand makes, not the distance from its own warp
// point. The caller delivers the messages by pumping; waits are the
// caller's business too.
class MousePlayer
{
public:
    // window: the host's top-level window, whose client area the script's
    // coordinates are in.
    explicit MousePlayer(void* window) : _window(window) {}

    void play(const MouseScript::Step& step);

private:
    void post_button(unsigned message, int x, int y);
    void post_at(unsigned message, int x, int y, unsigned extra_state);
    unsigned get_key_state() const;

    // Where the hand is, in the script's coordinates.
    void move_hand(const MouseScript::Step& step, int& x, int& y);

    void* _window;
    int _last_x = 0;
    int _last_y = 0;
    bool _left = false;
    bool _right = false;
};

}  // namespace vsthost
