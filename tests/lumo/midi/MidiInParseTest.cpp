#include "tests/lumo/midi/MidiRecorder.h"

#include "lumo/midi/MidiMgr.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

namespace
{

using Strings = std::vector<std::string>;
using Event = zq_test::TestMidiIn::Event;

class MidiInParseTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        in.connect(nullptr, &mgr, &rec);
        ASSERT_EQ(in.activate(), 0);
    }
    void send(int status, int d1, int d2, double detune = 0.0) { in.dispatch(status, d1, d2, detune); }
    void cc(int channel, int controller, int value) { send(0xB0 + channel, controller, value); }
    // Controller and value pairs, in order.
    void ccs(int channel, std::initializer_list<std::pair<int, int>> pairs)
    {
        for (const auto& [controller, value] : pairs)
        {
            cc(channel, controller, value);
        }
    }

    lumo::MidiMgr mgr;
    zq_test::MidiRecorder rec;
    zq_test::TestMidiIn in;
};

TEST_F(MidiInParseTest, NotesCarryPitchVelocityAndTuning)
{
    send(0x91, 60, 64, 0.25);
    send(0x91, 60, 0);
    send(0x81, 61, 32);
    send(0xA1, 62, 128 + 16);  // data bytes are masked to 7 bits
    EXPECT_EQ(rec.calls, (Strings{"on 1 60 60.25 0 1 1", "off 1 60 0", "off 1 61 0.5", "poly 1 62 0.25"}));

    // Coarse tuning +2 semitones (RPN 2 = 66), then fine tuning +0.5 (RPN 1).
    rec.calls.clear();
    ccs(0, {{101, 0}, {100, 2}, {6, 66}});
    EXPECT_DOUBLE_EQ(in.channel_state(0).get_tuning(), 2.0);
    ccs(0, {{100, 1}, {38, 50}});
    EXPECT_DOUBLE_EQ(in.channel_state(0).get_tuning(), 2.5);
    send(0x90, 60, 1);
    EXPECT_EQ(rec.calls.back(), "on 0 60 62.5 0 0.015625 1");
}

TEST_F(MidiInParseTest, SustainDefersNoteOffsUntilThePedalLifts)
{
    cc(0, 64, 64);  // 64 counts as down
    send(0x90, 60, 100);
    send(0x90, 61, 100);
    send(0x80, 60, 10);
    send(0x80, 61, 10);
    send(0x90, 61, 90);  // struck again while held: its deferred note-off is gone
    rec.calls.clear();
    ccs(0, {{64, 127}, {64, 63}});  // the same state again does nothing; 63 counts as up
    EXPECT_EQ(rec.calls, (Strings{"cc 0 64 127", "cc 0 64 63", "off 0 60 1"}));
    EXPECT_TRUE(in.channel_state(0).is_note_on(61));
    EXPECT_FALSE(in.channel_state(0).is_note_on(60));
}

TEST_F(MidiInParseTest, BendRangeByRpnZeroInStandardOrder)
{
    ccs(0, {{101, 0}, {100, 0}, {6, 12}, {38, 0}});
    EXPECT_DOUBLE_EQ(in.get_pitch_bend_range(0), 12.0);
    EXPECT_EQ(in.events.back(), (Event{101 * 65536 + 0, 1536}));
    EXPECT_EQ(rec.calls.back(), "rpn 0 0 1536");
    // Selecting numbers is reported as plain controllers and drives nothing.
    EXPECT_EQ(rec.calls.front(), "cc 0 101 0");
    EXPECT_EQ(in.events.size(), 2u);

    rec.calls.clear();
    send(0xE0, 0x00, 0x40);
    send(0xE0, 0x7F, 0x7F);
    send(0xE0, 0x00, 0x00);
    EXPECT_EQ(rec.calls, (Strings{"bend 0 0", "bend 0 11.9985", "bend 0 -12"}));
    EXPECT_DOUBLE_EQ(in.channel_state(0).get_bend(), -12.0);
}

// The null RPN restores the defaults, unknown RPNs report zero, and NRPN
// values are kept per number below 2048.
TEST_F(MidiInParseTest, RpnAndNrpnNumbersSelectWhatDataEntryChanges)
{
    ccs(3, {{101, 0}, {100, 0}, {6, 24}, {100, 5}, {6, 7}});
    EXPECT_EQ(in.events.back(), (Event{101 * 65536 + 5, 0}));
    ccs(3, {{101, 127}, {100, 127}, {6, 0}});
    EXPECT_DOUBLE_EQ(in.get_pitch_bend_range(3), 2.0);
    EXPECT_EQ(in.channel_state(3).get_rpn_number(), 0);
    EXPECT_DOUBLE_EQ(in.get_pitch_bend_range(0), 2.0);  // other channels untouched

    ccs(2, {{99, 0}, {98, 2}, {6, 127}, {38, 127}});
    EXPECT_EQ(in.events.back(), (Event{99 * 65536 + 2, 16383}));
    EXPECT_EQ(rec.calls.back(), "nrpn 2 2 16383");
    ccs(2, {{99, 16}, {6, 5}});  // NRPN 2050: nothing stored, reported as 0
    EXPECT_EQ(in.events.back(), (Event{99 * 65536 + 2050, 0}));
    EXPECT_EQ(in.channel_state(2).get_nrpn_value(2), 16383);
}

TEST_F(MidiInParseTest, PlainControllersAndProgramsAndJunk)
{
    cc(0, 7, 127);
    EXPECT_EQ(in.events.back(), (Event{7 * 65536, 16256}));
    send(0xC0, 5, 0);
    EXPECT_EQ(rec.calls.back(), "program 0 5");
    EXPECT_EQ(in.channel_state(0).get_program(), 5);

    rec.calls.clear();
    rec.raw = true;
    for (int status = 0xF0; status <= 0xFF; ++status)
    {
        send(status, 1, 2);
    }
    EXPECT_TRUE(rec.calls.empty());
    send(0x35, 0xFF, 0x80);  // a data byte where the status belongs
    send(0xD4, 100, 0);
    EXPECT_EQ(rec.calls, (Strings{"raw 5 3 127 0", "raw 4 13 100 0"}));
}

TEST_F(MidiInParseTest, ChannelStreamIs452BytesAndRoundTrips)
{
    cc(4, 64, 127);
    send(0xC4, 9, 0);
    ccs(4, {{101, 0}, {100, 0}, {6, 7}, {38, 50}});
    send(0xE4, 0, 0x60);
    std::vector<std::uint8_t> data(in.get_size());
    ASSERT_EQ(data.size(), 452u);
    ASSERT_EQ(in.write(data.data(), data.size()), 0);
    const std::uint8_t* rec4 = data.data() + 4 + 4 * 28;
    EXPECT_EQ(std::vector<std::uint8_t>(rec4, rec4 + 24),
              (std::vector<std::uint8_t>{0, 0, 0, 1, 0, 0, 0, 4, 0, 0, 0, 9, 0, 0, 1, 0, 0, 0, 0, 0, 0x20, 0, 0x03,
                                         0xB2}));
    EXPECT_EQ(in.write(data.data(), data.size() - 1), -1);

    zq_test::MidiRecorder other_rec;
    zq_test::TestMidiIn other;
    other.connect(nullptr, &mgr, &other_rec);
    other.activate();
    ASSERT_EQ(other.read(data.data(), data.size()), 0);
    EXPECT_TRUE(other.channel_state(4).is_sustain_down());
    EXPECT_TRUE(other.channel_state(4).is_held(100));
    EXPECT_EQ(other.channel_state(4).get_program(), 9);
    EXPECT_DOUBLE_EQ(other.get_pitch_bend_range(4), 7.5);
    EXPECT_DOUBLE_EQ(other.channel_state(4).get_bend(), in.channel_state(4).get_bend());
    EXPECT_EQ(other_rec.calls.size(), 16u);  // every channel announces its bend
    EXPECT_EQ(other.read(data.data(), data.size() - 1), -1);
}

TEST(MidiChannelRecordTest, VersionZeroKeepsTheStateAndFieldsAreClamped)
{
    lumo::MidiChannelState state;
    state.reset(nullptr, 0);
    std::vector<std::uint8_t> record(28, 0);
    record[11] = 3;  // program 3 under version 0
    EXPECT_EQ(state.read(record.data(), record.size() - 1), -1);
    ASSERT_EQ(state.read(record.data(), record.size()), 0);
    EXPECT_EQ(state.get_program(), 0);

    record[3] = 7;
    record[12] = 0x80;  // bank -32768
    record[22] = 0x7F;  // bend range raw 32767
    record[23] = 0xFF;
    record[24] = 0x7F;  // NaN bend
    record[25] = 0xC0;
    ASSERT_EQ(state.read(record.data(), record.size()), 0);
    EXPECT_EQ(state.get_program(), 3);
    EXPECT_EQ(state.get_bank(), 0);
    EXPECT_EQ(state.get_bend_range_raw(), 16383);
    EXPECT_EQ(state.get_bend(), 0.0);
    EXPECT_EQ(state.get_channel(), 0);
}

TEST(MidiChannelRecordTest, BendRangeFromSemitonesKeepsHundredths)
{
    zq_test::TestMidiIn in;
    in.activate();
    in.set_pitch_bend_range(12.5f);
    EXPECT_EQ(in.channel_state(15).get_bend_range_raw(), 12 * 128 + 50);
    EXPECT_DOUBLE_EQ(in.get_pitch_bend_range(15), 12.5);
    in.set_pitch_bend_range(std::nanf(""));
    EXPECT_DOUBLE_EQ(in.get_pitch_bend_range(0), 12.5);
    EXPECT_EQ(in.get_pitch_bend_range(16), 0.0);
}

}  // namespace
