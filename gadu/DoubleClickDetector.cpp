#include "gadu/DoubleClickDetector.h"

#include <cstdlib>

namespace gadu
{

std::int32_t DoubleClickDetector::on_press(std::int32_t button, std::int32_t x, std::int32_t y, double seconds)
{
    const bool second = button == _button && seconds - _time <= kInterval && std::abs(x - _x) <= kDistance
                     && std::abs(y - _y) <= kDistance;
    _button = second ? 0 : button;
    _x = x;
    _y = y;
    _time = seconds;
    return second ? button : 0;
}

}  // namespace gadu
