#pragma once

#include "TempoMap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vsthost
{

// One channel message of a MIDI file at its absolute tick.
struct MidiFileEvent
{
    std::uint64_t tick = 0;
    std::array<std::uint8_t, 3> bytes{};  // status and up to two data bytes, unused ones zero
};

// A Standard MIDI File reduced to what a host plays: the channel messages of
// every track merged in time order, and the tempo map. System exclusive and
// meta events other than tempo are skipped. The reader trusts no length or
// count in the file: each is checked against the bytes that are really there.
struct MidiFile
{
    static constexpr int error_not_midi = -2101;       // no "MThd" header
    static constexpr int error_bad_header = -2102;     // header values no file can have
    static constexpr int error_format2 = -2103;        // independent sequences are not played
    static constexpr int error_truncated = -2104;      // a chunk or event runs past the end
    static constexpr int error_bad_event = -2105;      // a byte that cannot start or continue an event
    static constexpr int error_missing_tracks = -2106; // fewer track chunks than the header counts

    TempoMap tempo;  // time-code files ignore their tempo changes
    std::vector<MidiFileEvent> events;  // by tick; events of one tick keep their track order

    // 0, or one of the error codes above; out is complete only on 0.
    static int read(const std::uint8_t* data, std::size_t size, MidiFile& out);
    static const char* get_error_text(int code);
    // Format 0: the tempo changes and the events of one track, each message
    // with its own status byte.
    std::vector<std::uint8_t> write() const;

    // Bytes of a channel message with this status, status included (0 when the
    // byte is no channel status).
    static int get_message_size(std::uint8_t status);
};

}  // namespace vsthost
