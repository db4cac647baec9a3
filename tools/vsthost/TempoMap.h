#pragma once

#include <cstdint>
#include <vector>

namespace vsthost
{

// Turns the ticks of a MIDI file into seconds and back. Metrical files count
// ticks per quarter note and follow their tempo changes; time-code files count
// ticks per second and have no tempo.
class TempoMap
{
public:
    static constexpr std::uint32_t default_tempo = 500000;  // microseconds per quarter: 120 BPM

    struct Change
    {
        std::uint64_t tick;
        std::uint32_t usec_per_quarter;
    };

    // From the time division word of a file's header: ticks per quarter note
    // when the top bit is clear, else minus the frames per second (24, 25, 29
    // for 29.97 or 30) in the high byte and ticks per frame in the low byte.
    explicit TempoMap(std::uint16_t division);
    TempoMap() : TempoMap(480) {}
    static bool is_valid_division(std::uint16_t division);

    // Changes may come in any order (tracks of a file are read one after the
    // other); a later change at the same tick wins.
    void add_change(std::uint64_t tick, std::uint32_t usec_per_quarter);

    double get_seconds(std::uint64_t tick) const;
    // The nearest tick to a time; times before zero give tick 0.
    std::uint64_t get_tick(double seconds) const;

    std::uint16_t get_division() const { return _division; }
    bool is_metrical() const { return (_division & 0x8000) == 0; }
    const std::vector<Change>& get_changes() const { return _changes; }

private:
    struct Segment
    {
        std::uint64_t tick;
        double seconds;          // at the segment's first tick
        double seconds_per_tick;
    };

    void rebuild();
    const Segment& find_segment_by_tick(std::uint64_t tick) const;

    std::uint16_t _division;
    std::vector<Change> _changes;    // sorted by tick, one per tick
    std::vector<Segment> _segments;  // never empty
};

}  // namespace vsthost
