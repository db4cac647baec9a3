#include "zarquette/CatArmy.h"

#include "sys/Clock.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace zarquette
{

CatArmy::CatArmy() : CatArmy(get_sample_set(sys::get_local_time().day))
{
}

CatArmy::CatArmy(const SampleSet& set)
{
    load(set);
}

SampleSet CatArmy::get_sample_set(int day_of_month)
{
    return day_of_month % 7 == 1 ? SampleSet::get_voices() : SampleSet::get_cats();
}

void CatArmy::load(const SampleSet& set)
{
    _player.resize(set.size);
    for (int i = 0; i < set.size; ++i)
    {
        const int group = set.entries[i].group;
        if (group < 0 || group >= max_groups || _player.load(i, set.entries[i].name) != 0)
        {
            throw std::runtime_error("zarquette::CatArmy::CatArmy(): cannot load source sample.");
        }
        _nbr_groups = std::max(_nbr_groups, group + 1);
        ++_groups[group].count;
    }
    // The set is sorted by group, so each group's recordings are contiguous.
    for (int g = 1; g < max_groups; ++g)
    {
        _groups[g].first = _groups[g - 1].first + _groups[g - 1].count;
    }
}

void CatArmy::set_buffers(float* left, float* right)
{
    _out_l = left;
    _out_r = right;
}

void CatArmy::set_sample_freq(float hz)
{
    if (!(hz > 0.0f && hz < 1.0e7f))
    {
        return;
    }
    _sample_freq = hz;
    _player.set_sample_freq(hz);
    _tick_pos = 0;
    // Rates below 50 Hz would round the tick to nothing; it lasts a frame then.
    _tick_len = std::max(1, static_cast<int>(std::floor(hz * 0.01f + 0.5f)));
}

void CatArmy::set_oignons(float o)
{
    o = (o > 0.0f) ? std::min(o, 1.0f) : 0.0f;  // NaN counts as 0
    const double odds = std::exp(std::log(10.0) * (3.0 - 2.0 * o));
    _trigger_odds = static_cast<int>(std::floor(odds + 0.5));
    _group_centre = std::clamp(1.25f * o - 0.5f, 0.001f, 0.999f);
    _group_spread = 1.0f - 0.75f * o;
    _pan_spread = 1.0f - o;
}

void CatArmy::reset()
{
    _player.stop_all();
    _tick_pos = 0;
}

void CatArmy::render(int n)
{
    if (_out_l == nullptr || _out_r == nullptr || n <= 0)
    {
        return;
    }
    std::fill(_out_l, _out_l + n, 0.0f);
    std::fill(_out_r, _out_r + n, 0.0f);
    for (int done = 0; done < n;)
    {
        if (_tick_pos == 0)
        {
            run_tick();
        }
        const int k = std::min(n - done, _tick_len - _tick_pos);
        _player.render(_out_l + done, _out_r + done, k);
        _tick_pos += k;
        if (_tick_pos >= _tick_len)
        {
            _tick_pos = 0;
        }
        done += k;
    }
}

// The draws come in a fixed order (trigger, group, recording, pan) so that
// the army's choices repeat exactly from run to run.
void CatArmy::run_tick()
{
    if (_rnd.gen_int(_trigger_odds) != 0 || _nbr_groups == 0)
    {
        return;
    }
    const float r = _rnd.gen_shaped(_group_centre, _group_spread);
    const int group = std::clamp(static_cast<int>(std::floor(static_cast<float>(_nbr_groups) * r)), 0, _nbr_groups - 1);
    const Group& g = _groups[group];
    if (g.count == 0)
    {
        return;
    }
    const int index = g.first + _rnd.gen_int(g.count);
    const float p = _rnd.gen_shaped(0.5f, _pan_spread);
    _player.play(index, 1.0f, 2.0f * p - 1.0f, 1.0f);
}

}  // namespace zarquette
