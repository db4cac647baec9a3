#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsthost
{

class MidiEventBlock;
struct MidiFile;

// The channel messages of a MIDI file at their sample frames for one sample
// rate (ticks to seconds by the file's tempo map, seconds to the nearest
// frame), handed out block by block at their offsets inside each block.
class MidiSchedule
{
public:
    MidiSchedule(const MidiFile& file, double sample_rate);

    // Fills the block with the events of frames start .. start + frames - 1,
    // each with its offset from start. Blocks are asked for in order; events
    // before start that were not asked for are skipped. Answers the events
    // that did not fit into the block.
    std::size_t fill_block(std::uint64_t start, std::int32_t frames, MidiEventBlock& block);

    // The most events that fall into one block when blocks of this size are
    // cut from frame 0 on: the capacity that fill_block needs.
    std::size_t get_max_per_block(std::int32_t frames) const;
    std::size_t get_count() const { return _events.size(); }
    // One past the last event's frame (0 without events).
    std::uint64_t get_end_frame() const { return _events.empty() ? 0 : _events.back().frame + 1; }

private:
    struct Scheduled
    {
        std::uint64_t frame;
        std::array<std::uint8_t, 3> bytes;
    };

    std::vector<Scheduled> _events;  // by frame
    std::size_t _next = 0;
};

}  // namespace vsthost
