#include "TempoMap.h"

#include <algorithm>
#include <cmath>

namespace vsthost
{

namespace
{

int get_frames_per_second(std::uint16_t division)
{
    return 256 - (division >> 8);
}

}  // namespace

TempoMap::TempoMap(std::uint16_t division) : _division(division)
{
    rebuild();
}

bool TempoMap::is_valid_division(std::uint16_t division)
{
    if ((division & 0x8000) == 0)
    {
        return division != 0;
    }
    const int fps = get_frames_per_second(division);
    return (fps == 24 || fps == 25 || fps == 29 || fps == 30) && (division & 0xFF) != 0;
}

void TempoMap::add_change(std::uint64_t tick, std::uint32_t usec_per_quarter)
{
    auto at = std::lower_bound(_changes.begin(), _changes.end(), tick,
                               [](const Change& c, std::uint64_t t) { return c.tick < t; });
    if (at != _changes.end() && at->tick == tick)
    {
        at->usec_per_quarter = usec_per_quarter;
    }
    else
    {
        _changes.insert(at, Change{tick, usec_per_quarter});
    }
    rebuild();
}

void TempoMap::rebuild()
{
    _segments.clear();
    if (!is_metrical())
    {
        const int fps = get_frames_per_second(_division);
        const double frames_per_second = fps == 29 ? 30000.0 / 1001.0 : fps;
        _segments.push_back(Segment{0, 0.0, 1.0 / (frames_per_second * (_division & 0xFF))});
        return;
    }
    const double quarter = static_cast<double>(_division);
    _segments.push_back(Segment{0, 0.0, default_tempo * 1e-6 / quarter});
    for (const Change& c : _changes)
    {
        const Segment& last = _segments.back();
        const double seconds = last.seconds + static_cast<double>(c.tick - last.tick) * last.seconds_per_tick;
        const Segment next{c.tick, seconds, c.usec_per_quarter * 1e-6 / quarter};
        if (c.tick == last.tick)
        {
            _segments.back() = next;
        }
        else
        {
            _segments.push_back(next);
        }
    }
}

const TempoMap::Segment& TempoMap::find_segment_by_tick(std::uint64_t tick) const
{
    auto after = std::upper_bound(_segments.begin(), _segments.end(), tick,
                                  [](std::uint64_t t, const Segment& s) { return t < s.tick; });
    return *(after - 1);
}

double TempoMap::get_seconds(std::uint64_t tick) const
{
    const Segment& s = find_segment_by_tick(tick);
    return s.seconds + static_cast<double>(tick - s.tick) * s.seconds_per_tick;
}

std::uint64_t TempoMap::get_tick(double seconds) const
{
    if (!(seconds > 0.0))
    {
        return 0;
    }
    auto after = std::upper_bound(_segments.begin(), _segments.end(), seconds,
                                  [](double t, const Segment& s) { return t < s.seconds; });
    const Segment& s = *(after - 1);
    return s.tick + static_cast<std::uint64_t>(std::llround((seconds - s.seconds) / s.seconds_per_tick));
}

}  // namespace vsthost
