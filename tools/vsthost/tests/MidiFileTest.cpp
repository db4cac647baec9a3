#include "tools/vsthost/MidiFile.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace
{

using vsthost::MidiFile;
using vsthost::MidiFileEvent;
using vsthost::TempoMap;
using Bytes = std::vector<std::uint8_t>;

void append(Bytes& b, std::initializer_list<int> values)
{
    for (int v : values)
    {
        b.push_back(static_cast<std::uint8_t>(v));
    }
}

void append_u32(Bytes& b, std::size_t v)
{
    append(b, {static_cast<int>(v >> 24) & 0xFF, static_cast<int>(v >> 16) & 0xFF, static_cast<int>(v >> 8) & 0xFF,
               static_cast<int>(v) & 0xFF});
}

Bytes header(int format, int tracks, int division)
{
    Bytes b{'M', 'T', 'h', 'd'};
    append_u32(b, 6);
    append(b, {0, format, tracks >> 8, tracks & 0xFF, division >> 8, division & 0xFF});
    return b;
}

void add_track(Bytes& file, const Bytes& body)
{
    append(file, {'M', 'T', 'r', 'k'});
    append_u32(file, body.size());
    file.insert(file.end(), body.begin(), body.end());
}

int read(const Bytes& b, MidiFile& out)
{
    return MidiFile::read(b.data(), b.size(), out);
}

std::array<std::uint8_t, 3> msg(int a, int b, int c)
{
    return {static_cast<std::uint8_t>(a), static_cast<std::uint8_t>(b), static_cast<std::uint8_t>(c)};
}

TEST(MidiFile, Format0WithRunningStatusMetaAndSysexSkipped)
{
    Bytes file = header(0, 1, 96);
    add_track(file, {0x00, 0xFF, 0x03, 0x04, 'T', 'e', 's', 't',  // track name
                     0x00, 0x90, 60, 100,                         // note on
                     0x60, 64, 90,                                // running status: note on 64 at 96
                     0x00, 0xF0, 0x03, 0x43, 0x12, 0xF7,          // SysEx, cancels running status
                     0x81, 0x00, 0xC3, 5,                         // program change after 128 ticks
                     0x10, 7,                                     // running program change
                     0x00, 0xFF, 0x2F, 0x00,                      // end of track
                     0x00, 0x90, 1, 1});                          // after the end: ignored
    MidiFile m;
    ASSERT_EQ(read(file, m), 0);
    ASSERT_EQ(m.events.size(), 4u);
    EXPECT_EQ(m.events[0].tick, 0u);
    EXPECT_EQ(m.events[0].bytes, msg(0x90, 60, 100));
    EXPECT_EQ(m.events[1].tick, 96u);
    EXPECT_EQ(m.events[1].bytes, msg(0x90, 64, 90));
    EXPECT_EQ(m.events[2].tick, 224u);
    EXPECT_EQ(m.events[2].bytes, msg(0xC3, 5, 0));
    EXPECT_EQ(m.events[3].tick, 240u);
    EXPECT_EQ(m.events[3].bytes, msg(0xC3, 7, 0));
    EXPECT_DOUBLE_EQ(m.tempo.get_seconds(96), 0.5);  // default 120 BPM
}

TEST(MidiFile, Format1MergesTracksAndFollowsTempoChanges)
{
    Bytes file = header(1, 2, 480);
    // Tempo track: 120 BPM, then 60 BPM from beat 2 on.
    add_track(file, {0x00, 0xFF, 0x51, 0x03, 0x07, 0xA1, 0x20,        // 500000 us
                     0x87, 0x40, 0xFF, 0x51, 0x03, 0x0F, 0x42, 0x40,  // at 960: 1000000 us
                     0x00, 0xFF, 0x2F, 0x00});
    // Unknown chunks between tracks are skipped.
    append(file, {'X', 'Y', 'Z', 'W', 0, 0, 0, 2, 1, 2});
    add_track(file, {0x83, 0x60, 0xB1, 7, 100,  // 480
                     0x87, 0x40, 0xB1, 7, 50,   // 1440
                     0x00, 0xFF, 0x2F, 0x00});
    MidiFile m;
    ASSERT_EQ(read(file, m), 0);
    ASSERT_EQ(m.events.size(), 2u);
    EXPECT_DOUBLE_EQ(m.tempo.get_seconds(m.events[0].tick), 0.5);
    // Two beats at 120 BPM (1 s), then one at 60 BPM (1 s).
    EXPECT_DOUBLE_EQ(m.tempo.get_seconds(m.events[1].tick), 2.0);
    EXPECT_EQ(m.tempo.get_tick(2.0), 1440u);
    EXPECT_EQ(m.tempo.get_tick(0.75), 720u);
    EXPECT_EQ(m.tempo.get_tick(-1.0), 0u);
}

TEST(MidiFile, EventsOfOneTickKeepTrackOrder)
{
    Bytes file = header(1, 2, 96);
    add_track(file, {0x10, 0x90, 1, 1, 0x00, 0xFF, 0x2F, 0x00});
    add_track(file, {0x00, 0x90, 2, 2, 0x10, 0x90, 3, 3, 0x00, 0xFF, 0x2F, 0x00});
    MidiFile m;
    ASSERT_EQ(read(file, m), 0);
    ASSERT_EQ(m.events.size(), 3u);
    EXPECT_EQ(m.events[0].bytes[1], 2);
    EXPECT_EQ(m.events[1].bytes[1], 1);
    EXPECT_EQ(m.events[2].bytes[1], 3);
}

TEST(MidiFile, TimeCodeDivisionCountsTicksPerSecond)
{
    Bytes file = header(0, 1, 0xE728);  // 25 frames of 40 ticks: 1000 per second
    add_track(file, {0x87, 0x68, 0x80, 60, 0, 0x00, 0xFF, 0x2F, 0x00});
    MidiFile m;
    ASSERT_EQ(read(file, m), 0);
    EXPECT_DOUBLE_EQ(m.tempo.get_seconds(m.events.at(0).tick), 1.0);
    MidiFile again;
    const Bytes written = m.write();
    ASSERT_EQ(MidiFile::read(written.data(), written.size(), again), 0);
    EXPECT_EQ(again.tempo.get_division(), 0xE728);
}

TEST(MidiFile, MalformedFilesGiveTheirErrors)
{
    const Bytes track_end{0x00, 0xFF, 0x2F, 0x00};
    struct Case
    {
        const char* what;
        Bytes bytes;
        int expected;
    };
    std::vector<Case> cases;
    cases.push_back({"empty", {}, MidiFile::error_not_midi});
    cases.push_back({"RIFF", {'R', 'I', 'F', 'F', 0, 0, 0, 6}, MidiFile::error_not_midi});
    Bytes short_header{'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0};
    cases.push_back({"short header", short_header, MidiFile::error_truncated});
    Bytes small_header{'M', 'T', 'h', 'd', 0, 0, 0, 4, 0, 0, 0, 1, 0, 96};
    cases.push_back({"header length 4", small_header, MidiFile::error_truncated});
    cases.push_back({"format 2", header(2, 1, 96), MidiFile::error_format2});
    cases.push_back({"format 3", header(3, 1, 96), MidiFile::error_bad_header});
    cases.push_back({"format 0 with 2 tracks", header(0, 2, 96), MidiFile::error_bad_header});
    cases.push_back({"no tracks", header(1, 0, 96), MidiFile::error_bad_header});
    cases.push_back({"division 0", header(0, 1, 0), MidiFile::error_bad_header});
    cases.push_back({"23 frames per second", header(0, 1, 0xE950), MidiFile::error_bad_header});
    cases.push_back({"missing track", header(1, 1, 96), MidiFile::error_missing_tracks});
    Bytes f = header(1, 2, 96);
    add_track(f, track_end);
    cases.push_back({"second track missing", f, MidiFile::error_missing_tracks});
    f = header(0, 1, 96);
    append(f, {'M', 'T', 'r', 'k', 0x7F, 0xFF, 0xFF, 0xFF, 0x00, 0xFF, 0x2F, 0x00});
    cases.push_back({"track longer than the file", f, MidiFile::error_truncated});
    auto one_track = [&](const Bytes& body) {
        Bytes g = header(0, 1, 96);
        add_track(g, body);
        return g;
    };
    cases.push_back({"data byte first", one_track({0x00, 0x40, 0x40}), MidiFile::error_bad_event});
    cases.push_back({"data byte >= 0x80", one_track({0x00, 0x90, 0x40, 0x90}), MidiFile::error_bad_event});
    cases.push_back({"message cut", one_track({0x00, 0x90, 0x40}), MidiFile::error_truncated});
    cases.push_back({"delta cut", one_track({0x81}), MidiFile::error_truncated});
    cases.push_back({"five-byte delta", one_track({0x81, 0x81, 0x81, 0x81, 0x01, 0x90, 1, 1}),
                     MidiFile::error_bad_event});
    cases.push_back({"SysEx longer than the track", one_track({0x00, 0xF0, 0x05, 0x01}),
                     MidiFile::error_truncated});
    cases.push_back({"meta longer than the track", one_track({0x00, 0xFF, 0x01, 0x8F, 0x7F, 0x01}),
                     MidiFile::error_truncated});
    cases.push_back({"tempo of two bytes", one_track({0x00, 0xFF, 0x51, 0x02, 0x01, 0x02}),
                     MidiFile::error_bad_event});
    cases.push_back({"tempo zero", one_track({0x00, 0xFF, 0x51, 0x03, 0, 0, 0}), MidiFile::error_bad_event});
    cases.push_back({"song position in a file", one_track({0x00, 0xF2, 0x00, 0x00}), MidiFile::error_bad_event});
    cases.push_back({"running status after meta", one_track({0x00, 0x90, 1, 1, 0x00, 0xFF, 0x01, 0x00, 0x00, 2, 2}),
                     MidiFile::error_bad_event});
    for (const Case& c : cases)
    {
        MidiFile m;
        EXPECT_EQ(read(c.bytes, m), c.expected) << c.what;
        EXPECT_STRNE(MidiFile::get_error_text(c.expected), "unknown error") << c.what;
    }
}

TEST(MidiFile, WriterRoundTripsEventsAndTempoChanges)
{
    MidiFile m;
    m.tempo = TempoMap(960);
    m.tempo.add_change(0, 400000);
    m.tempo.add_change(1920, 750000);
    m.events = {MidiFileEvent{0, msg(0xB2, 0, 2)}, MidiFileEvent{0, msg(0xB2, 32, 0)},
                MidiFileEvent{0, msg(0xC2, 44, 0)}, MidiFileEvent{1000, msg(0xE0, 0, 64)},
                MidiFileEvent{5000, msg(0x80, 60, 0)}, MidiFileEvent{0x20000000, msg(0xD5, 9, 0)}};
    const Bytes bytes = m.write();
    MidiFile back;
    ASSERT_EQ(MidiFile::read(bytes.data(), bytes.size(), back), 0);
    ASSERT_EQ(back.events.size(), m.events.size());
    for (std::size_t i = 0; i < m.events.size(); ++i)
    {
        EXPECT_EQ(back.events[i].tick, m.events[i].tick) << i;
        EXPECT_EQ(back.events[i].bytes, m.events[i].bytes) << i;
    }
    ASSERT_EQ(back.tempo.get_changes().size(), 2u);
    EXPECT_EQ(back.tempo.get_changes()[1].tick, 1920u);
    EXPECT_EQ(back.tempo.get_changes()[1].usec_per_quarter, 750000u);
    EXPECT_DOUBLE_EQ(back.tempo.get_seconds(2880), 0.8 + 0.75);
}

TEST(MidiFile, WriterEncodesDeltasAsVariableLengthQuantities)
{
    MidiFile m;
    m.tempo = TempoMap(96);
    m.events = {MidiFileEvent{0x3FFF, msg(0x90, 60, 1)}, MidiFileEvent{0x4000 + 0x3FFF, msg(0x90, 61, 1)}};
    const Bytes bytes = m.write();
    const Bytes track(bytes.begin() + 22, bytes.end());
    const Bytes expected{0xFF, 0x7F, 0x90, 60, 1, 0x81, 0x80, 0x00, 0x90, 61, 1, 0x00, 0xFF, 0x2F, 0x00};
    EXPECT_EQ(track, expected);
    EXPECT_EQ(bytes[9], 0);   // format 0
    EXPECT_EQ(bytes[11], 1);  // one track
    EXPECT_EQ(bytes[21], expected.size());
}

}  // namespace
