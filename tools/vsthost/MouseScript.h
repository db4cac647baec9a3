#pragma once

#include <string>
#include <vector>

namespace vsthost
{

// A script of mouse actions for driving an editor, in the editor's client
// coordinates, steps separated by ';' or new lines:
//   down X Y, up X Y            left button
//   rdown X Y, rup X Y          right button
//   click X Y                   down and up
//   dblclick X Y                down, up, the double click, up
//   move X Y [STEPS]            from the last point in STEPS equal moves,
//                               each a step of its own
//   wheel X Y DELTA             120 per notch, positive away from the user
//   wait MS                     idle the editor for MS milliseconds
// Words and numbers are separated by blanks; every error is a
// std::invalid_argument naming the step.
class MouseScript
{
public:
    enum class Action
    {
        down,
        up,
        rdown,
        rup,
        click,
        dblclick,
        move,
        wheel,
        wait,
    };

    struct Step
    {
        Action action = Action::wait;
        int x = 0;
        int y = 0;
        // The delta for wheel, milliseconds for wait.
        int amount = 0;
    };

    static std::vector<Step> parse(const std::string& text);

    // The largest number of moves one move may ask for, and the longest wait:
    // far beyond any test, small enough that a typo cannot hang the tool.
    static constexpr int max_moves = 10000;
    static constexpr int max_wait_ms = 600000;
};

}  // namespace vsthost
