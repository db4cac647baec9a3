// What the LV2 adapter reads from and writes to a host's buffers: atom
// sequences and objects, the echo's MIDI, and the bindings' record in a
// saved state.
#include "Lv2TestAtoms.h"

#include "lumo/lv2/Lv2BindingRecord.h"
#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2MidiOut.h"
#include "lumo/lv2/Lv2SequenceReader.h"
#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/lv2/Lv2Urids.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/lv2/MidiMessageSize.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <tuple>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Frames = std::vector<std::uint32_t>;
using zq_test::ObjectBytes;
using zq_test::SequenceBytes;

class Lv2Atoms : public ::testing::Test
{
protected:
    Lv2Atoms() { urids.map_all(map.use(), "urn:test:plugin"); }

    // Frames of the events the reader hands out for a block of frames.
    Frames frames_read(const LV2_Atom_Sequence* seq, std::uint32_t frames, const lumo::Lv2Urids& with)
    {
        lumo::Lv2SequenceReader reader(seq, frames, with);
        Frames out;
        for (lumo::Lv2Event e; reader.next(e);)
        {
            out.push_back(e.frame);
        }
        return out;
    }
    Frames frames_read(const LV2_Atom_Sequence* seq, std::uint32_t frames) { return frames_read(seq, frames, urids); }

    zq_test::UridMap map;
    lumo::Lv2Urids urids;
    const Bytes note{0x90, 60, 100};
};

TEST_F(Lv2Atoms, ReaderSkipsEventsOutOfOrderOrOutsideTheBlock)
{
    SequenceBytes seq(urids.atom_sequence);
    seq.event(3, urids.midi_event, note)
        .event(2, urids.midi_event, note)    // before the previous one
        .event(-1, urids.midi_event, note)   // before the block
        .event(3, urids.midi_event, note)    // same frame: in order
        .event(64, urids.midi_event, note)   // one past the block
        .event(63, urids.midi_event, note);
    EXPECT_EQ(frames_read(seq.get(), 64), (Frames{3, 3, 63}));
    // A run of no frames hands over what is due now.
    EXPECT_EQ(frames_read(seq.get(), 0), Frames{});
    SequenceBytes now(urids.atom_sequence);
    now.event(0, urids.midi_event, note).event(1, urids.midi_event, note);
    EXPECT_EQ(frames_read(now.get(), 0), Frames{0});
}

TEST_F(Lv2Atoms, ReaderHandsOutTypeAndBodyAndStopsAtAnEventThatOverrunsTheSequence)
{
    SequenceBytes seq(urids.atom_sequence);
    seq.event(1, urids.midi_event, note).event(2, 77, Bytes{1, 2, 3, 4, 5}).event(3, urids.midi_event, note, 4000);
    seq.event(4, urids.midi_event, note);
    lumo::Lv2SequenceReader reader(seq.get(), 16, urids);
    lumo::Lv2Event e;
    ASSERT_TRUE(reader.next(e));
    EXPECT_EQ(e.type, urids.midi_event);
    EXPECT_EQ(Bytes(e.body, e.body + e.size), note);
    ASSERT_TRUE(reader.next(e));
    EXPECT_EQ(e.type, 77u);
    EXPECT_EQ(e.size, 5u);
    EXPECT_FALSE(reader.next(e));
    EXPECT_FALSE(reader.next(e));
}

// Beats cannot be placed in a block, anything but a sequence is none, and
// without the host's map nothing can be told apart.
TEST_F(Lv2Atoms, ReaderTakesOnlySequencesTimedInFramesFromAMappedHost)
{
    for (const auto& [type, unit, count] : {std::tuple{urids.atom_sequence, map.id(LV2_ATOM__beatTime), 0u},
                                            {urids.atom_sequence, urids.atom_frame_time, 1u},
                                            {urids.atom_chunk, 0u, 0u}})
    {
        SequenceBytes seq(type, unit);
        seq.event(0, urids.midi_event, note);
        EXPECT_EQ(frames_read(seq.get(), 8).size(), count) << unit;
        EXPECT_TRUE(frames_read(seq.get(), 8, lumo::Lv2Urids{}).empty());
    }
    EXPECT_TRUE(frames_read(nullptr, 8).empty());
}

// What fits is the echo's business (Lv2MidiOut's tests); a buffer too small
// for even an empty sequence is left as an empty atom.
TEST_F(Lv2Atoms, WriterLeavesABufferTooSmallForASequenceAsAnEmptyAtom)
{
    std::vector<std::uint64_t> buffer(4, 0xFFFFFFFFFFFFFFFFu);
    auto* seq = reinterpret_cast<LV2_Atom_Sequence*>(buffer.data());
    seq->atom.size = 4;
    lumo::Lv2SequenceWriter tiny(seq, urids.atom_sequence);
    EXPECT_EQ(seq->atom.size, 0u);
    EXPECT_EQ(seq->atom.type, 0u);
    EXPECT_FALSE(tiny.append(0, urids.midi_event, note.data(), 1));
}

TEST_F(Lv2Atoms, ObjectFindsANumberOfAnyNumericTypeAndStopsAtAPropertyThatOverruns)
{
    const std::uint32_t position = urids.time_position;
    const std::uint32_t bpm = urids.time_bpm;
    const std::uint32_t other = map.id("urn:test:other");
    const auto number_of = [&](const ObjectBytes& object, std::uint32_t type = 0) {
        lumo::Lv2Event e;
        e.type = type == 0 ? urids.atom_object : type;
        e.body = object.bytes.data();
        e.size = static_cast<std::uint32_t>(object.bytes.size());
        const lumo::Lv2AtomObject found(e, urids);
        double value = -1.0;
        return found.is_a(position) && found.find_number(bpm, value) ? value : -1.0;
    };
    const ObjectBytes one = ObjectBytes(position).property(bpm, urids.atom_float, 1.0f);
    const ObjectBytes second = ObjectBytes(position).property(other, urids.atom_int, 1);
    EXPECT_EQ(number_of(ObjectBytes(second).property(bpm, urids.atom_float, 128.5f)), 128.5);
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_double, 99.25)), 99.25);
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_int, std::int32_t{90})), 90.0);
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_long, std::int64_t{140})), 140.0);
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_chunk, 1.0f)), -1.0);
    // A value shorter than its type is not read past its end.
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_double, 1.0f)), -1.0);
    EXPECT_EQ(number_of(ObjectBytes(position).property(bpm, urids.atom_long, std::int32_t{9})), -1.0);
    EXPECT_EQ(number_of(ObjectBytes(other).property(bpm, urids.atom_float, 1.0f)), -1.0);
    EXPECT_EQ(number_of(one, urids.atom_blank), 1.0);
    EXPECT_EQ(number_of(one, urids.midi_event), -1.0);
    // A property whose value claims more bytes than the object has.
    ObjectBytes broken = one;
    broken.bytes[8 + 8] = 0xFF;
    EXPECT_EQ(number_of(broken), -1.0);
}

// ---- The echo ---------------------------------------------------------------


TEST(Lv2MidiOut, MessagesTakeTheBytesTheirStatusSays)
{
    const std::vector<std::pair<int, std::uint32_t>> sizes = {
        {0x7F, 0}, {0x80, 3}, {0xAF, 3}, {0xB3, 3}, {0xC0, 2}, {0xDF, 2}, {0xE0, 3}, {0xEF, 3},
        {0xF0, 0}, {0xF1, 2}, {0xF2, 3}, {0xF3, 2}, {0xF6, 1}, {0xF7, 0}, {0xF8, 1}, {0xFF, 1}};
    for (const auto& [status, size] : sizes)
    {
        EXPECT_EQ(lumo::get_midi_message_size(static_cast<std::uint8_t>(status)), size) << status;
    }
}

// The echo waits in the queue for a block whose buffer has room, and is
// dropped when nobody listens: the port is not connected or not selected.
TEST_F(Lv2Atoms, TheEchoThatDoesNotFitWaitsForTheNextBlock)
{
    lumo::Lv2MidiOut out;
    out.activate();
    out.open();
    std::vector<std::uint64_t> buffer(64);
    auto* seq = reinterpret_cast<LV2_Atom_Sequence*>(buffer.data());
    const auto drain = [&](LV2_Atom_Sequence* target) {
        seq->atom.size = sizeof(LV2_Atom_Sequence_Body) + 2 * 24;
        lumo::Lv2SequenceWriter writer(target, urids.atom_sequence);
        out.drain(writer, urids.midi_event);
        std::vector<std::uint8_t> firsts;
        lumo::Lv2SequenceReader reader(seq, 1, urids);
        lumo::Lv2Event e;
        while (target != nullptr && reader.next(e))
        {
            EXPECT_EQ(e.size, lumo::get_midi_message_size(e.body[0]));
            firsts.push_back(e.body[1]);
        }
        return firsts;
    };
    for (int i = 0; i < 5; ++i)
    {
        EXPECT_EQ(out.send_packet(0xB0, i, 0, 0), 1);
    }
    out.send_packet(0x12, 5, 0, 0);  // no status: never sent
    out.send_packet(0xC0, 6, 0, 0);
    EXPECT_EQ(drain(seq), (std::vector<std::uint8_t>{0, 1}));
    EXPECT_EQ(drain(seq), (std::vector<std::uint8_t>{2, 3}));
    EXPECT_EQ(drain(seq), (std::vector<std::uint8_t>{4, 6}));
    EXPECT_TRUE(drain(seq).empty());

    out.send_packet(0xB0, 7, 0, 0);
    drain(nullptr);
    out.close();
    out.send_packet(0xB0, 8, 0, 0);
    EXPECT_TRUE(drain(seq).empty());
}

// ---- The record of the MIDI bindings in a saved state -------------------------


using Ids = std::vector<std::int32_t>;

constexpr std::int32_t cc74 = 74 << 16;
constexpr std::int32_t nrpn2 = (99 << 16) + 2;

Bytes record(const Ids& ids, std::uint32_t count)
{
    Bytes out{static_cast<std::uint8_t>(count >> 24), static_cast<std::uint8_t>(count >> 16),
              static_cast<std::uint8_t>(count >> 8), static_cast<std::uint8_t>(count)};
    for (const std::int32_t id : ids)
    {
        const auto u = static_cast<std::uint32_t>(id);
        out.insert(out.end(), {static_cast<std::uint8_t>(u >> 24), static_cast<std::uint8_t>(u >> 16),
                               static_cast<std::uint8_t>(u >> 8), static_cast<std::uint8_t>(u)});
    }
    return out;
}

bool reads(const Bytes& bytes, Ids& ids)
{
    return lumo::Lv2BindingRecord::read(bytes.data(), bytes.size(), ids);
}

TEST(Lv2BindingRecord, TheMapGoesThroughARecordUnchangedAndReplacesTheOneThere)
{
    lumo::MidiMgr saved;
    saved.bind(0, 99, 0);
    saved.bind(2, 74, 0);
    saved.bind(4, 101, 7);
    const Bytes bytes = lumo::Lv2BindingRecord::write(saved);
    EXPECT_EQ(bytes, record({99 << 16, -1, cc74, -1, (101 << 16) + 7}, 5));

    lumo::MidiMgr restored;
    restored.bind(1, 99, 1);
    restored.bind(9, 11, 0);
    Ids ids;
    ASSERT_TRUE(reads(bytes, ids));
    lumo::Lv2BindingRecord::apply(ids, restored);
    EXPECT_EQ(lumo::Lv2BindingRecord::write(restored), bytes);
    EXPECT_EQ(lumo::Lv2BindingRecord::write(lumo::MidiMgr()), record({}, 0));
}

TEST(Lv2BindingRecord, AMalformedRecordIsRefusedWhole)
{
    Ids ids{123};
    EXPECT_FALSE(reads(record({cc74, nrpn2}, 3), ids));           // shorter than its count
    EXPECT_FALSE(reads(record({cc74, nrpn2, -1}, 2), ids));       // longer
    EXPECT_FALSE(reads(Bytes{0, 0, 0}, ids));                     // no count
    EXPECT_FALSE(reads(record(Ids(257, -1), 257), ids));          // more than the map holds
    EXPECT_FALSE(reads(record({cc74, -1, cc74}, 3), ids));        // one controller, two parameters
    EXPECT_FALSE(reads(record({(99 << 16) + 16384}, 1), ids));    // an NRPN beyond 14 bits
    EXPECT_FALSE(reads(record({cc74 + 1}, 1), ids));              // a controller with a number
    EXPECT_FALSE(reads(record({-2}, 1), ids));
    EXPECT_EQ(ids, Ids{123});
    EXPECT_TRUE(reads(record(Ids(256, -1), 256), ids));
    EXPECT_TRUE(reads(record({-1, nrpn2}, 2), ids));
    EXPECT_EQ(ids, (Ids{-1, nrpn2}));
}

}  // namespace
