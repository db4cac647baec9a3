#include "zarquette/BeretLoop.h"

#include "dsp/FloatGuard.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{
namespace
{

constexpr double kMinBeats = 1.0 / 1024.0;
constexpr double kMaxBeats = 64.0;

}  // namespace

BeretLoop::BeretLoop()
{
    _beret.set_delay(60.0 / _tempo * _delay_beats);
    _beret.set_hold_gain(1.0f);
    _beret.set_delay(0.03125);
}

void BeretLoop::set_sample_freq(float f)
{
    if (!dsp::is_usable_sample_freq(f))
    {
        return;
    }
    _sample_freq = f;
    _beret.set_sample_freq(f);
    update_lengths();
}

void BeretLoop::set_tempo(float bpm)
{
    if (!(bpm > 0.0f && std::isfinite(bpm)))
    {
        return;
    }
    const double beats = _counter * _inv_beat_len;
    _tempo = bpm;
    update_lengths();
    _counter = static_cast<int>(std::floor(beats * _beat_len));
}

void BeretLoop::set_lengths(float delay_beats, float period_beats)
{
    _delay_beats = dsp::clamp_finite(static_cast<double>(delay_beats), kMinBeats, kMaxBeats);
    _period_beats = dsp::clamp_finite(static_cast<double>(period_beats), kMinBeats, kMaxBeats);
    update_lengths();
}

void BeretLoop::restart_gate()
{
    _counter = 0;
    _gate = true;
}

void BeretLoop::reset()
{
    _beret.reset();
}

void BeretLoop::update_lengths()
{
    _beat_len = _sample_freq * 60.0 / _tempo;
    _inv_beat_len = 1.0 / _beat_len;
    _delay_len = static_cast<int>(std::floor(_delay_beats * _beat_len));
    // A cycle of at least one sample, so that rendering always moves on.
    _period_len = std::max(static_cast<int>(std::floor(_beat_len * _period_beats)), 1);
    _beret.set_delay(60.0 / _tempo * _delay_beats);
}

// Opens the gate at the start of each cycle and closes it once delay_len samples
// of the cycle have passed.
void BeretLoop::update_gate()
{
    if (_counter >= _period_len)
    {
        _counter = 0;
        _gate = true;
    }
    else if (_counter == 0)
    {
        _gate = true;
    }
    else if (_counter == _delay_len)
    {
        _gate = false;
    }
    else
    {
        return;
    }
    _beret.set_gate(_gate);
}

void BeretLoop::render(int offset, int n)
{
    int done = 0;
    while (done < n)
    {
        update_gate();
        int k = 0;
        if (_counter < _delay_len)
        {
            k = _delay_len - _counter;
        }
        else if (_counter < _period_len)
        {
            k = _period_len - _counter;
        }
        k = std::min(k, n - done);
        _beret.render(offset + done, k);
        done += k;
        _counter += k;
    }
}

}  // namespace zarquette
