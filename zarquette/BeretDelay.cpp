#include "zarquette/BeretDelay.h"

#include "dsp/FloatGuard.h"

#include <cmath>

namespace zarquette
{
namespace
{

std::size_t round_up_to_power_of_two(int n)
{
    std::size_t size = 8;
    while (size < static_cast<std::size_t>(n))
    {
        size <<= 1;
    }
    return size;
}

}  // namespace

BeretDelay::BeretDelay(int capacity) : _buffer(round_up_to_power_of_two(capacity), 0.0f)
{
    _mask = static_cast<std::uint32_t>(_buffer.size() - 1);
    set_delay(3.0);
}

void BeretDelay::set_capacity(int capacity)
{
    const std::size_t size = round_up_to_power_of_two(capacity);
    if (size == _buffer.size())
    {
        return;
    }
    // Built aside first: when memory runs out the line stays as it was.
    std::vector<float> fresh(size, 0.0f);
    _buffer.swap(fresh);
    _mask = static_cast<std::uint32_t>(size - 1);
    _write = 0;
    set_delay(_delay);
}

void BeretDelay::set_delay(double samples)
{
    _delay = samples;
    // The taps sit delay_int - 3 to delay_int samples back: the nearest must be a
    // sample already written, the farthest one not yet overwritten.
    const double length = dsp::clamp_finite(samples + 1.0, 4.0, static_cast<double>(_buffer.size()));
    _delay_int = static_cast<int>(std::ceil(length));
    const double d = _delay_int - length;
    _weights[0] = static_cast<float>(-(d - 1.0) * d * (d - 2.0) / 6.0);
    _weights[1] = static_cast<float>((d + 1.0) * (d - 1.0) * (d - 2.0) / 2.0);
    _weights[2] = static_cast<float>(-(d + 1.0) * d * (d - 2.0) / 2.0);
    _weights[3] = static_cast<float>((d + 1.0) * d * (d - 1.0) / 6.0);
    update_scaled();
}

void BeretDelay::set_gain(float gain)
{
    _gain = gain;
    update_scaled();
}

void BeretDelay::update_scaled()
{
    for (std::size_t j = 0; j < _weights.size(); ++j)
    {
        _scaled[j] = _weights[j] * _gain;
    }
}

}  // namespace zarquette
