#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace zarquette
{

// The loop's delay line: a circular buffer read through a four-tap Lagrange
// interpolator, so that delays of a fractional number of samples repeat exactly
// as long as asked. The buffer is allocated at construction and again when its
// owner asks for another capacity, on the host's thread, never while rendering.
class BeretDelay
{
public:
    // capacity is rounded up to a power of two.
    explicit BeretDelay(int capacity);

    int get_capacity() const { return static_cast<int>(_buffer.size()); }
    // Makes room for `capacity` samples (rounded up to a power of two). A new
    // size starts from silence; the same size keeps what the line holds and
    // allocates nothing. The delay is kept as far as the new size allows.
    void set_capacity(int capacity);

    // A delay of `samples` (fractional) between a write and the read that
    // returns it; clamped to what the buffer and the four taps allow.
    void set_delay(double samples);
    // Gain applied to everything read.
    void set_gain(float gain);

    int get_delay_int() const { return _delay_int; }
    // How many reads may run ahead of the writes: the read `ahead` samples
    // after the last write still only touches samples already written.
    int get_lookahead() const { return _delay_int - 3; }
    const std::array<float, 4>& get_weights() const { return _weights; }

    // What a read returns `ahead` writes from now; ahead below get_lookahead().
    float read(int ahead = 0) const
    {
        const std::uint32_t base = _write + static_cast<std::uint32_t>(ahead) - static_cast<std::uint32_t>(_delay_int);
        float sum = 0.0f;
        for (std::uint32_t j = 0; j < 4; ++j)
        {
            sum += _scaled[j] * _buffer[(base + j) & _mask];
        }
        return sum;
    }

    void write(float x)
    {
        _buffer[_write] = x;
        _write = (_write + 1) & _mask;
    }

private:
    void update_scaled();

    std::vector<float> _buffer;
    std::uint32_t _mask = 0;
    std::uint32_t _write = 0;
    double _delay = 3.0;
    int _delay_int = 4;
    float _gain = 0.0f;
    std::array<float, 4> _weights{};
    std::array<float, 4> _scaled{};
};

}  // namespace zarquette
