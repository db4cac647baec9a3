#include "MidiSchedule.h"

#include "MidiEventBlock.h"
#include "MidiFile.h"

#include <algorithm>
#include <cmath>

namespace vsthost
{

MidiSchedule::MidiSchedule(const MidiFile& file, double sample_rate)
{
    // A file may put events millions of years away (long deltas at the
    // slowest tempo); they keep their order but stop at a frame that still
    // converts exactly and that no render reaches.
    constexpr double last_frame = 4503599627370496.0;  // 2^52
    _events.reserve(file.events.size());
    for (const MidiFileEvent& e : file.events)
    {
        const double frame = std::min(std::floor(file.tempo.get_seconds(e.tick) * sample_rate + 0.5), last_frame);
        _events.push_back(Scheduled{static_cast<std::uint64_t>(frame), e.bytes});
    }
}

std::size_t MidiSchedule::fill_block(std::uint64_t start, std::int32_t frames, MidiEventBlock& block)
{
    const std::uint64_t end = start + static_cast<std::uint64_t>(std::max(frames, 0));
    std::size_t lost = 0;
    for (; _next < _events.size() && _events[_next].frame < end; ++_next)
    {
        const Scheduled& e = _events[_next];
        if (e.frame >= start
            && !block.add(static_cast<std::int32_t>(e.frame - start), e.bytes[0], e.bytes[1], e.bytes[2]))
        {
            ++lost;
        }
    }
    return lost;
}

std::size_t MidiSchedule::get_max_per_block(std::int32_t frames) const
{
    const auto size = static_cast<std::uint64_t>(std::max(frames, 1));
    std::size_t most = 0;
    for (std::size_t first = 0; first < _events.size();)
    {
        const std::uint64_t block = _events[first].frame / size;
        std::size_t last = first;
        while (last < _events.size() && _events[last].frame / size == block)
        {
            ++last;
        }
        most = std::max(most, last - first);
        first = last;
    }
    return most;
}

}  // namespace vsthost
