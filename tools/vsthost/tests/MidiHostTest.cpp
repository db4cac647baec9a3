// The host's MIDI: events placed at their frames across blocks, what the
// plug-in sends checked and kept, parameter values as CSV, and a whole render
// through the test plug-in, which echoes what it receives (a malformed file's
// stop is the end-to-end test's).
#include "tools/vsthost/AudioBuffers.h"
#include "tools/vsthost/AutomationCsv.h"
#include "tools/vsthost/BinaryFile.h"
#include "tools/vsthost/HostedPlugin.h"
#include "tools/vsthost/MidiEventBlock.h"
#include "tools/vsthost/MidiFile.h"
#include "tools/vsthost/MidiOutCollector.h"
#include "tools/vsthost/MidiSchedule.h"
#include "tools/vsthost/PluginLibrary.h"
#include "tools/vsthost/RenderCommand.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace
{

using vsthost::MidiEventBlock;
using vsthost::MidiFile;
using vsthost::MidiFileEvent;
using vsthost::MidiOutCollector;
using vsthost::MidiSchedule;
using vsthost::TempoMap;

const lumo::vst2::MidiEvent& midi_at(MidiEventBlock& block, int i)
{
    return *reinterpret_cast<const lumo::vst2::MidiEvent*>(block.use_events()->events[i]);
}

MidiFileEvent cc(std::uint64_t tick, int controller, int value)
{
    return MidiFileEvent{tick, {0xB0, static_cast<std::uint8_t>(controller), static_cast<std::uint8_t>(value)}};
}

TEST(MidiSchedule, PlacesEventsAtTheirFramesInsideEachBlock)
{
    MidiFile file;
    file.tempo = TempoMap(0xE728);  // 1000 ticks per second: 48 frames per tick at 48 kHz
    file.events = {cc(0, 1, 0), cc(10, 1, 10), cc(21, 1, 21), cc(21, 1, 22), cc(32, 1, 32)};
    MidiSchedule schedule(file, 48000.0);
    EXPECT_EQ(schedule.get_max_per_block(500), 2u);
    EXPECT_EQ(schedule.get_end_frame(), 1537u);
    MidiEventBlock block(2);
    const std::int32_t expected_offsets[][2] = {{0, 480}, {-1, -1}, {8, 8}};
    for (std::uint64_t b = 0; b < 3; ++b)
    {
        block.clear();
        EXPECT_EQ(schedule.fill_block(b * 500, 500, block), 0u);
        for (int i = 0; i < 2; ++i)
        {
            if (expected_offsets[b][i] < 0)
            {
                EXPECT_EQ(block.get_count(), static_cast<std::size_t>(i)) << "block " << b;
                break;
            }
            EXPECT_EQ(midi_at(block, i).delta_frames, expected_offsets[b][i]) << "block " << b;
            EXPECT_EQ(midi_at(block, i).midi_data[0], static_cast<char>(0xB0));
            EXPECT_EQ(midi_at(block, i).byte_size, 32);
        }
    }
    // Blocks need not have the same size: one frame at 1536.
    block.clear();
    EXPECT_EQ(schedule.fill_block(1536, 1, block), 0u);
    ASSERT_EQ(block.get_count(), 1u);
    EXPECT_EQ(midi_at(block, 0).midi_data[2], 32);
}

TEST(MidiSchedule, FollowsTheTempoMapAndCountsWhatDoesNotFit)
{
    MidiFile file;
    file.tempo = TempoMap(480);
    file.tempo.add_change(480, 1000000);  // 60 BPM from the second beat
    file.events = {cc(240, 7, 1), cc(480, 7, 2), cc(720, 7, 3), cc(720, 7, 4), cc(720, 7, 5)};
    MidiSchedule schedule(file, 44100.0);
    MidiEventBlock block(2);
    // The first event (a quarter second: frame 11025) lies before the first
    // block asked for: it is never handed out.
    EXPECT_EQ(schedule.fill_block(11026, 64, block), 0u);
    EXPECT_EQ(block.get_count(), 0u);
    EXPECT_EQ(schedule.fill_block(11090, 11000, block), 0u);
    ASSERT_EQ(block.get_count(), 1u);
    EXPECT_EQ(midi_at(block, 0).delta_frames, 22050 - 11090);
    block.clear();
    // Half a second plus half a beat at 60 BPM: 1 s.
    EXPECT_EQ(schedule.fill_block(44000, 200, block), 1u);
    EXPECT_EQ(block.get_count(), 2u);
    EXPECT_EQ(midi_at(block, 0).delta_frames, 100);
}

TEST(MidiSchedule, EventsBeyondAnyRenderKeepTheirOrderWithoutOverflow)
{
    MidiFile file;
    file.tempo = TempoMap(1);
    file.tempo.add_change(0, 0xFFFFFF);  // 16.8 s per tick
    file.events = {cc(1, 7, 1), cc(std::uint64_t{1} << 40, 7, 2), cc(std::uint64_t{1} << 50, 7, 3)};
    MidiSchedule schedule(file, 768000.0);
    EXPECT_EQ(schedule.get_end_frame(), (std::uint64_t{1} << 52) + 1);
    EXPECT_EQ(schedule.get_max_per_block(64), 2u);
    MidiEventBlock block(4);
    EXPECT_EQ(schedule.fill_block(0, 1 << 30, block), 0u);
    EXPECT_EQ(block.get_count(), 1u);
}

lumo::vst2::MidiEvent make_event(std::int32_t delta, int status, int d1, int d2)
{
    lumo::vst2::MidiEvent e{};
    e.type = lumo::vst2::event_types::midi;
    e.byte_size = 32;
    e.delta_frames = delta;
    e.midi_data[0] = static_cast<char>(status);
    e.midi_data[1] = static_cast<char>(d1);
    e.midi_data[2] = static_cast<char>(d2);
    return e;
}

std::string collect_one(lumo::vst2::MidiEvent e)
{
    MidiOutCollector c;
    c.begin_block(64);
    MidiEventBlock block(1);
    block.add_raw(reinterpret_cast<lumo::vst2::Event*>(&e));
    c.take(block.use_events());
    EXPECT_EQ(c.get_count(), c.get_malformed() == 0 ? 1u : 0u);
    return c.describe_first_problem();
}

TEST(MidiOutCollector, KeepsWellFormedEventsAndNamesTheFirstFault)
{
    MidiOutCollector c;
    c.begin_block(64);
    MidiEventBlock block(4);
    block.add(0, 0xB2, 0, 2);
    block.add(63, 0xC2, 44, 0);
    block.add(5, 0xF8, 0, 0);  // clock: well formed, not a channel message to keep
    EXPECT_EQ(c.take(block.use_events()), 1);
    ASSERT_EQ(c.get_count(), 2u);
    EXPECT_EQ(c.get_events()[1].delta_frames, 63);
    EXPECT_EQ(c.get_events()[1].bytes[1], 44);
    EXPECT_EQ(c.describe_first_problem(), "");
    c.begin_block(64);
    EXPECT_EQ(c.get_count(), 0u);
    EXPECT_EQ(c.get_total(), 3);

    EXPECT_EQ(collect_one(make_event(64, 0x90, 1, 1)), "deltaFrames 64 outside its block");
    EXPECT_EQ(collect_one(make_event(-1, 0x90, 1, 1)), "deltaFrames -1 outside its block");
    EXPECT_NE(collect_one(make_event(0, 0x40, 1, 1)).find("status byte 0x40"), std::string::npos);
    EXPECT_NE(collect_one(make_event(0, 0xF0, 1, 1)).find("status byte 0xf0"), std::string::npos);
    EXPECT_NE(collect_one(make_event(0, 0x91, 0x80, 1)).find("data byte"), std::string::npos);
    EXPECT_NE(collect_one(make_event(0, 0x91, 1, 0xFF)).find("data byte"), std::string::npos);
    lumo::vst2::MidiEvent odd = make_event(0, 0x90, 1, 1);
    odd.byte_size = 7;
    EXPECT_EQ(collect_one(odd), "a MIDI event with byte size 7");
    odd.byte_size = 24;
    EXPECT_EQ(collect_one(odd), "");
    odd.type = 3;
    EXPECT_EQ(collect_one(odd), "an event of unknown type 3");
}

TEST(MidiOutCollector, RefusesBrokenBlocksAndDropsWhatDoesNotFit)
{
    MidiOutCollector c;
    c.begin_block(4);
    EXPECT_EQ(c.take(nullptr), 0);
    EXPECT_EQ(c.describe_first_problem(), "a null events block");
    MidiEventBlock block(1);
    block.use_events()->num_events = -5;
    EXPECT_EQ(c.take(block.use_events()), 0);
    EXPECT_EQ(c.get_malformed(), 2);
    MidiEventBlock many(MidiOutCollector::capacity + 3);
    for (std::size_t i = 0; i < many.get_capacity(); ++i)
    {
        many.add(0, 0x90, 60, 1);
    }
    EXPECT_EQ(c.take(many.use_events()), 1);
    EXPECT_EQ(c.get_count(), MidiOutCollector::capacity);
    EXPECT_EQ(c.get_dropped(), 3);
}

TEST(AutomationCsv, NamesQuotedWhereNeededAndValuesExact)
{
    std::ostringstream out;
    vsthost::AutomationCsv csv(out, {"Gain", "Mix, wet", "Say \"hi\""});
    csv.add_row(0, {0.0f, 1.0f, 0.5f});
    csv.add_row(512, {0.1f, 0.333333343f, 1e-7f});
    EXPECT_EQ(out.str(), "frame,Gain,\"Mix, wet\",\"Say \"\"hi\"\"\"\n0,0,1,0.5\n512,0.100000001,0.333333343,1.00000001e-07\n");
}

// A block of constant input through the test plug-in with events for it.
class TestGainMidi : public ::testing::Test
{
protected:
    TestGainMidi() : library(VSTHOST_TESTGAIN), plugin(library), in(2, 64), out(2, 64), block(8)
    {
        plugin.set_sample_rate(48000);
        plugin.set_block_size(64);
        plugin.resume();
        std::fill_n(in.use_channel(0), 64, 1.0f);
        std::fill_n(in.use_channel(1), 64, 1.0f);
    }

    void process()
    {
        plugin.send_events(block.use_events());
        plugin.process(in.use_pointers(), out.use_pointers(), 64);
        block.clear();
    }

    vsthost::PluginLibrary library;
    vsthost::HostedPlugin plugin;
    vsthost::AudioBuffers in;
    vsthost::AudioBuffers out;
    MidiEventBlock block;
};

TEST_F(TestGainMidi, AppliesControllersAtTheirFrameAndEchoesThem)
{
    EXPECT_TRUE(plugin.receives_midi());
    EXPECT_TRUE(plugin.sends_midi());
    EXPECT_EQ(plugin.use_requests().want_midi.load(), 1);
    ASSERT_TRUE(plugin.set_param_text(0, "0"));
    block.add(37, 0xB3, 7, 0);      // gain to -60 dB from frame 37
    block.add(12, 0xB0, 11, 127);   // expression, out of order
    block.add(50, 0xB0, 7, 0x80);   // junk: ignored, not echoed
    process();
    EXPECT_FLOAT_EQ(out.use_channel(0)[36], 1.0f);
    EXPECT_NEAR(out.use_channel(0)[37], 0.001f, 1e-6);
    EXPECT_NEAR(out.use_channel(1)[63], 0.001f, 1e-6);
    EXPECT_EQ(plugin.get_param(0), 0.0f);
    const MidiOutCollector& echo = plugin.use_midi_out();
    EXPECT_EQ(echo.describe_first_problem(), "");
    ASSERT_EQ(echo.get_count(), 2u);
    EXPECT_EQ(echo.get_events()[0].delta_frames, 12);
    EXPECT_EQ(echo.get_events()[1].delta_frames, 37);
    EXPECT_EQ(echo.get_events()[1].bytes[0], 0xB3);

    block.add(0, 0xB0, 11, 0);  // expression 0 silences the output
    process();
    EXPECT_EQ(out.use_channel(0)[0], 0.0f);
    ASSERT_EQ(plugin.use_midi_out().get_count(), 1u);
}

TEST(RenderMidi, EchoComesBackOnTheTicksItWasPlayedAt)
{
    MidiFile in;
    in.tempo = TempoMap(480);
    in.tempo.add_change(960, 400000);
    for (int i = 0; i < 40; ++i)
    {
        in.events.push_back(cc(static_cast<std::uint64_t>(i) * 97, 7, i * 3));
    }
    vsthost::write_binary_file("midi-test-in.mid", in.write());
    std::ostringstream log;
    ASSERT_EQ(vsthost::RenderCommand::run({VSTHOST_TESTGAIN, "-o", "midi-test.wav", "--block", "100", "--midi-in",
                                           "midi-test-in.mid", "--midi-out", "midi-test-out.mid",
                                           "--automation-out", "midi-test.csv", "--length", "4"},
                                          log),
              0);
    EXPECT_NE(log.str().find("played 40 MIDI events"), std::string::npos) << log.str();
    const std::vector<std::uint8_t> bytes = vsthost::read_binary_file("midi-test-out.mid");
    MidiFile echo;
    ASSERT_EQ(MidiFile::read(bytes.data(), bytes.size(), echo), 0);
    ASSERT_EQ(echo.events.size(), in.events.size());
    for (std::size_t i = 0; i < in.events.size(); ++i)
    {
        EXPECT_EQ(echo.events[i].tick, in.events[i].tick) << i;
        EXPECT_EQ(echo.events[i].bytes, in.events[i].bytes) << i;
    }
    // 4 s in blocks of 100: a header and 1764 rows; the last controller (117)
    // comes at 3783 ticks: 1 s for two beats at 120 BPM, 2.3525 s for the
    // rest at 150 BPM.
    std::ifstream csv("midi-test.csv");
    std::string line;
    std::vector<std::string> lines;
    while (std::getline(csv, line))
    {
        lines.push_back(line);
    }
    ASSERT_EQ(lines.size(), 1765u);
    EXPECT_EQ(lines[0], "frame,Gain,Phase");
    EXPECT_EQ(lines[1], "0,0,0");
    EXPECT_EQ(lines[1478], "147700,0.897637784,0");
    EXPECT_EQ(lines[1479], "147800,0.92125982,0");
    EXPECT_EQ(lines.back(), "176300,0.92125982,0");
}

}  // namespace
