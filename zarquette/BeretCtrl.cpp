#include "zarquette/BeretCtrl.h"

#include "dsp/FloatGuard.h"
#include "zarquette/FastMath.h"
#include "zarquette/PatternGenerator.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{
namespace
{

constexpr int kPassesPerPattern = 2;
constexpr int kShortPattern = 16;
constexpr float kStartCutoffLog2 = 10.0f;
constexpr float kStartRampSeconds = 0.1f;

}  // namespace

BeretCtrl::BeretCtrl()
{
    _cutoff_ramp.set_ramp_time(kStartRampSeconds);
    _cutoff_ramp.set_value(kStartCutoffLog2);
}

void BeretCtrl::set_buffers(float* out, const float* in, float* scratch)
{
    _loop.use_beret().set_buffers(out, in, scratch);
}

void BeretCtrl::set_sample_freq(float f)
{
    if (!dsp::is_usable_sample_freq(f))
    {
        return;
    }
    _sample_freq = f;
    _cutoff_ramp.set_sample_freq(f);
    _loop.set_sample_freq(f);
    update_beat_len();
}

void BeretCtrl::set_tempo(float bpm)
{
    if (std::isnan(bpm))
    {
        return;
    }
    const double beats = _pos * _inv_beat_len;
    _tempo = std::clamp(bpm, kMinTempo, kMaxTempo);
    _loop.set_tempo(_tempo);
    update_beat_len();
    _pos = static_cast<int>(std::floor(_beat_len * beats));
}

void BeretCtrl::update_beat_len()
{
    _beat_len = _sample_freq * 60.0 / _tempo;
    _inv_beat_len = 1.0 / _beat_len;
}

void BeretCtrl::set_nuke(bool on)
{
    _nuke = on ? 1.0f : 0.0f;
    _regen_now = true;
}

void BeretCtrl::set_vin_rouge(float v)
{
    _loop.set_vin_rouge(v);
}

void BeretCtrl::reset()
{
    _loop.reset();
    _cutoff_ramp.set_value(_cutoff_ramp.get_target());
    _cur_step = -1;
    _pos = 0;
    _pass_count = 0;
    _loop.restart_gate();
    _regen_at_wrap = true;
}

void BeretCtrl::generate_pattern()
{
    PatternGenerator(_rnd, _nuke).fill(_pattern);
    _regen_now = false;
}

int BeretCtrl::get_step_start(int step) const
{
    return static_cast<int>(std::floor(step * _beat_len / kStepsPerBeat));
}

void BeretCtrl::render(int n)
{
    if (_regen_now)
    {
        generate_pattern();
    }
    int done = 0;
    while (done < n)
    {
        advance_step();
        _loop.set_cutoff(fast_exp2(static_cast<float>(_cutoff_ramp.get_value())));
        // A position already past the boundary (after a rate change) renders
        // nothing here and moves on a step at the next turn.
        const int k = std::clamp(get_step_start(_cur_step + 1) - _pos, 0, n - done);
        _loop.render(done, k);
        _pos += k;
        _cutoff_ramp.advance(k);
        done += k;
    }
}

void BeretCtrl::advance_step()
{
    if (_pos < get_step_start(_cur_step + 1))
    {
        return;
    }
    ++_cur_step;
    if (_cur_step >= _pattern.get_length())
    {
        _cur_step = 0;
        _pos = 0;
        if (++_pass_count >= kPassesPerPattern)
        {
            _pass_count = 0;
            _regen_at_wrap = true;
        }
    }
    if (_regen_at_wrap)
    {
        _pattern.set_length(std::min(kShortPattern << _rnd.gen_int(2), Pattern::kMaxLength));
        generate_pattern();
        _regen_at_wrap = false;
    }
    apply_step(_cur_step);
}

void BeretCtrl::apply_step(int s)
{
    const Pattern::Step& step = _pattern.use_step(s);
    if (!step.active)
    {
        return;
    }
    _loop.set_lengths(static_cast<float>(step.delay), static_cast<float>(step.period));
    _loop.restart_gate();
    _cutoff_ramp.set_ramp_time(static_cast<float>(step.period * _beat_len / _sample_freq));
    _cutoff_ramp.set_value(step.cutoff_start);
    _cutoff_ramp.set_target(step.cutoff_end);
    _loop.set_resonance(step.resonance);
    _loop.set_drive(step.drive);
}

}  // namespace zarquette
