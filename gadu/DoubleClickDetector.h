#pragma once

#include <cstdint>

namespace gadu
{

// Turns presses into the double-click mask of MouseClick, for platforms that
// report only presses and releases: a press of the same button within half a
// second of the last one, and no more than 2 pixels away on either axis, is a
// double click. The press after a double click starts over, so three quick
// clicks are a double click and a single one, as users know it.
class DoubleClickDetector
{
public:
    static constexpr double kInterval = 0.5;
    static constexpr std::int32_t kDistance = 2;

    // button: one mouse_button bit; seconds on any clock that does not go
    // back. Answers the double-click mask of this press (the button, or 0).
    std::int32_t on_press(std::int32_t button, std::int32_t x, std::int32_t y, double seconds);

private:
    std::int32_t _button = 0;
    std::int32_t _x = 0;
    std::int32_t _y = 0;
    double _time = 0.0;
};

}  // namespace gadu
