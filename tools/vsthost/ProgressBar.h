#pragma once

#include <ostream>

namespace vsthost
{

// A one-line progress bar redrawn in place with a carriage return; silent
// when disabled (output that is not a terminal).
class ProgressBar
{
public:
    ProgressBar(std::ostream& out, bool enabled) : _out(out), _enabled(enabled) {}

    // fraction in [0, 1]; redraws only when the shown percentage changes.
    void update(double fraction);
    // Clears the bar's line.
    void finish();

private:
    std::ostream& _out;
    bool _enabled;
    int _shown = -1;
};

}  // namespace vsthost
