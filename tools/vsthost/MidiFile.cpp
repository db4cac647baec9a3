#include "MidiFile.h"

#include "ByteReader.h"
#include "ByteWriter.h"

#include <algorithm>

namespace vsthost
{

namespace
{

constexpr std::uint32_t tag_header = 0x4D546864;  // "MThd"
constexpr std::uint32_t tag_track = 0x4D54726B;   // "MTrk"
constexpr std::uint8_t meta = 0xFF;
constexpr std::uint8_t meta_tempo = 0x51;
constexpr std::uint8_t meta_end_of_track = 0x2F;
constexpr std::uint8_t sysex = 0xF0;
constexpr std::uint8_t sysex_escape = 0xF7;
// A variable-length quantity has at most four bytes (28 bits).
constexpr int max_vlq_bytes = 4;

// 0, or the reader's error: a quantity cut by the end is truncated, one
// longer than four bytes is malformed.
int read_vlq(ByteReader& r, std::uint32_t& out)
{
    out = 0;
    for (int i = 0; i < max_vlq_bytes; ++i)
    {
        std::uint8_t byte = 0;
        if (!r.get_u8(byte))
        {
            return MidiFile::error_truncated;
        }
        out = (out << 7) | (byte & 0x7Fu);
        if ((byte & 0x80) == 0)
        {
            return 0;
        }
    }
    return MidiFile::error_bad_event;
}

void write_vlq(ByteWriter& w, std::uint32_t v)
{
    std::uint8_t groups[max_vlq_bytes + 1];
    int n = 0;
    do
    {
        groups[n++] = static_cast<std::uint8_t>(v & 0x7F);
        v >>= 7;
    } while (v != 0 && n <= max_vlq_bytes);
    while (n > 1)
    {
        w.put_u8(static_cast<std::uint8_t>(groups[--n] | 0x80));
    }
    w.put_u8(groups[0]);
}

// Reads one track chunk's events into the file. A track that ends without
// its end-of-track event is taken as ended by its chunk length.
class TrackReader
{
public:
    TrackReader(const std::uint8_t* data, std::size_t size, MidiFile& file) : _r(data, size), _file(file) {}

    int read()
    {
        while (_r.get_remaining() > 0)
        {
            std::uint32_t delta = 0;
            std::uint8_t first = 0;
            const int result = read_vlq(_r, delta);
            if (result != 0)
            {
                return result;
            }
            if (!_r.get_u8(first))
            {
                return MidiFile::error_truncated;
            }
            _tick += delta;
            const int event_result = first == meta ? read_meta() : read_other(first);
            if (event_result != 0 || _ended)
            {
                return event_result;
            }
        }
        return 0;
    }

private:
    int read_meta()
    {
        std::uint8_t type = 0;
        std::uint32_t length = 0;
        const std::uint8_t* body = nullptr;
        if (!_r.get_u8(type))
        {
            return MidiFile::error_truncated;
        }
        const int result = read_vlq(_r, length);
        if (result != 0)
        {
            return result;
        }
        if (!_r.get_bytes(length, body))
        {
            return MidiFile::error_truncated;
        }
        // Meta events cancel running status.
        _running = 0;
        if (type == meta_end_of_track)
        {
            _ended = true;
        }
        else if (type == meta_tempo)
        {
            const std::uint32_t usec =
                length == 3 ? (std::uint32_t{body[0]} << 16) | (std::uint32_t{body[1]} << 8) | body[2] : 0;
            // A tempo of zero would put every later event at the same instant.
            if (usec == 0)
            {
                return MidiFile::error_bad_event;
            }
            _file.tempo.add_change(_tick, usec);
        }
        return 0;
    }

    int read_other(std::uint8_t first)
    {
        if (first == sysex || first == sysex_escape)
        {
            std::uint32_t length = 0;
            _running = 0;
            const int result = read_vlq(_r, length);
            if (result != 0)
            {
                return result;
            }
            return _r.skip(length) ? 0 : MidiFile::error_truncated;
        }
        MidiFileEvent event;
        event.tick = _tick;
        int data_index = 1;
        if (first < 0x80)
        {
            // Running status: the byte is the first data byte of a message
            // with the previous status.
            if (_running == 0)
            {
                return MidiFile::error_bad_event;
            }
            event.bytes = {_running, first, 0};
            data_index = 2;
        }
        else if (MidiFile::get_message_size(first) == 0)
        {
            // System common and real-time messages have no place in a file.
            return MidiFile::error_bad_event;
        }
        else
        {
            event.bytes[0] = first;
            _running = first;
        }
        for (; data_index < MidiFile::get_message_size(_running); ++data_index)
        {
            std::uint8_t byte = 0;
            if (!_r.get_u8(byte))
            {
                return MidiFile::error_truncated;
            }
            if (byte >= 0x80)
            {
                return MidiFile::error_bad_event;
            }
            event.bytes[static_cast<std::size_t>(data_index)] = byte;
        }
        _file.events.push_back(event);
        return 0;
    }

    ByteReader _r;
    MidiFile& _file;
    std::uint64_t _tick = 0;
    std::uint8_t _running = 0;
    bool _ended = false;
};

int read_header(ByteReader& r, MidiFile& out, std::uint16_t& tracks)
{
    std::uint32_t tag = 0;
    std::uint32_t length = 0;
    if (!r.get_u32_be(tag) || tag != tag_header)
    {
        return MidiFile::error_not_midi;
    }
    std::uint16_t format = 0;
    std::uint16_t division = 0;
    if (!r.get_u32_be(length) || length < 6 || !r.get_u16_be(format) || !r.get_u16_be(tracks)
        || !r.get_u16_be(division) || !r.skip(length - 6))
    {
        return MidiFile::error_truncated;
    }
    if (format == 2)
    {
        return MidiFile::error_format2;
    }
    if (format > 2 || tracks == 0 || (format == 0 && tracks != 1) || !TempoMap::is_valid_division(division))
    {
        return MidiFile::error_bad_header;
    }
    out.tempo = TempoMap(division);
    return 0;
}

}  // namespace

int MidiFile::get_message_size(std::uint8_t status)
{
    switch (status & 0xF0)
    {
    case 0x80:
    case 0x90:
    case 0xA0:
    case 0xB0:
    case 0xE0:
        return 3;
    case 0xC0:
    case 0xD0:
        return 2;
    default:
        return 0;
    }
}

int MidiFile::read(const std::uint8_t* data, std::size_t size, MidiFile& out)
{
    out = MidiFile();
    ByteReader r(data, size);
    std::uint16_t tracks = 0;
    int result = read_header(r, out, tracks);
    for (std::uint16_t found = 0; result == 0 && found < tracks;)
    {
        std::uint32_t tag = 0;
        std::uint32_t length = 0;
        const std::uint8_t* body = nullptr;
        if (r.get_remaining() == 0)
        {
            return error_missing_tracks;
        }
        if (!r.get_u32_be(tag) || !r.get_u32_be(length) || !r.get_bytes(length, body))
        {
            return error_truncated;
        }
        // Chunks of unknown kinds are skipped, as the format asks of readers.
        if (tag == tag_track)
        {
            result = TrackReader(body, length, out).read();
            ++found;
        }
    }
    std::stable_sort(out.events.begin(), out.events.end(),
                     [](const MidiFileEvent& a, const MidiFileEvent& b) { return a.tick < b.tick; });
    return result;
}

const char* MidiFile::get_error_text(int code)
{
    switch (code)
    {
    case 0:
        return "no error";
    case error_not_midi:
        return "not a Standard MIDI File (no MThd)";
    case error_bad_header:
        return "the MIDI file header holds an impossible format, track count or time division";
    case error_format2:
        return "MIDI files of format 2 (independent sequences) are not supported";
    case error_truncated:
        return "the MIDI file ends before its contents do";
    case error_bad_event:
        return "the MIDI file holds a malformed event";
    case error_missing_tracks:
        return "the MIDI file holds fewer tracks than its header counts";
    default:
        return "unknown error";
    }
}

std::vector<std::uint8_t> MidiFile::write() const
{
    ByteWriter track;
    std::uint64_t tick = 0;
    auto put_delta = [&](std::uint64_t at) {
        // One delta holds 28 bits; longer gaps are bridged by empty text events.
        while (at - tick > 0x0FFFFFFF)
        {
            write_vlq(track, 0x0FFFFFFF);
            for (std::uint8_t b : {meta, std::uint8_t{0x01}, std::uint8_t{0}})
            {
                track.put_u8(b);
            }
            tick += 0x0FFFFFFF;
        }
        write_vlq(track, static_cast<std::uint32_t>(at - tick));
        tick = at;
    };
    auto next_tempo = tempo.get_changes().begin();
    auto put_tempos_until = [&](std::uint64_t limit) {
        for (; next_tempo != tempo.get_changes().end() && next_tempo->tick <= limit; ++next_tempo)
        {
            put_delta(next_tempo->tick);
            const std::uint32_t usec = next_tempo->usec_per_quarter;
            for (std::uint32_t b : {std::uint32_t{meta}, std::uint32_t{meta_tempo}, 3u, usec >> 16, usec >> 8, usec})
            {
                track.put_u8(static_cast<std::uint8_t>(b));
            }
        }
    };
    for (const MidiFileEvent& e : events)
    {
        const int n = get_message_size(e.bytes[0]);
        if (n == 0)
        {
            continue;  // not a channel message: nothing a file of channel messages can hold
        }
        put_tempos_until(e.tick);
        put_delta(e.tick);
        track.put_bytes(e.bytes.data(), static_cast<std::size_t>(n));
    }
    put_tempos_until(UINT64_MAX);
    put_delta(tick);
    for (std::uint8_t b : {meta, meta_end_of_track, std::uint8_t{0}})
    {
        track.put_u8(b);
    }

    ByteWriter w;
    w.put_u32_be(tag_header);
    w.put_u32_be(6);
    w.put_u16_be(0);
    w.put_u16_be(1);
    w.put_u16_be(tempo.get_division());
    w.put_u32_be(tag_track);
    w.put_u32_be(static_cast<std::uint32_t>(track.use_bytes().size()));
    w.put_bytes(track.use_bytes().data(), track.use_bytes().size());
    return w.use_bytes();
}

}  // namespace vsthost
