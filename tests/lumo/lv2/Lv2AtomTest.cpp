#include "Lv2TestAtoms.h"

#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2SequenceReader.h"
#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/lv2/Lv2Urids.h"

#include <lv2/atom/atom.h>
#include <lv2/midi/midi.h>
#include <lv2/time/time.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;

class Lv2Atoms : public ::testing::Test
{
protected:
    Lv2Atoms() { urids.map_all(map.use(), "urn:test:plugin"); }

    // Frames of the events the reader hands out for a block of frames.
    std::vector<std::uint32_t> frames_read(const LV2_Atom_Sequence* seq, std::uint32_t frames)
    {
        lumo::Lv2SequenceReader reader(seq, frames, urids);
        std::vector<std::uint32_t> out;
        lumo::Lv2Event e;
        while (reader.next(e))
        {
            out.push_back(e.frame);
        }
        return out;
    }

    zq_test::UridMap map;
    lumo::Lv2Urids urids;
    const Bytes note{0x90, 60, 100};
};

TEST_F(Lv2Atoms, ReaderSkipsEventsOutOfOrderOrOutsideTheBlock)
{
    zq_test::SequenceBytes seq(urids.atom_sequence);
    seq.event(3, urids.midi_event, note)
        .event(2, urids.midi_event, note)    // before the previous one
        .event(-1, urids.midi_event, note)   // before the block
        .event(3, urids.midi_event, note)    // same frame: in order
        .event(64, urids.midi_event, note)   // one past the block
        .event(63, urids.midi_event, note);
    EXPECT_EQ(frames_read(seq.get(), 64), (std::vector<std::uint32_t>{3, 3, 63}));
    // A run of no frames hands over what is due now.
    EXPECT_EQ(frames_read(seq.get(), 0), (std::vector<std::uint32_t>{}));
    zq_test::SequenceBytes now(urids.atom_sequence);
    now.event(0, urids.midi_event, note).event(1, urids.midi_event, note);
    EXPECT_EQ(frames_read(now.get(), 0), (std::vector<std::uint32_t>{0}));
}

TEST_F(Lv2Atoms, ReaderHandsOutTypeAndBodyAndStopsAtAnEventThatOverrunsTheSequence)
{
    zq_test::SequenceBytes seq(urids.atom_sequence);
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

TEST_F(Lv2Atoms, ReaderTakesOnlySequencesTimedInFramesFromAMappedHost)
{
    zq_test::SequenceBytes beats(urids.atom_sequence, map.id(LV2_ATOM__beatTime));
    beats.event(0, urids.midi_event, note);
    EXPECT_TRUE(frames_read(beats.get(), 8).empty());
    zq_test::SequenceBytes frames(urids.atom_sequence, urids.atom_frame_time);
    frames.event(0, urids.midi_event, note);
    EXPECT_EQ(frames_read(frames.get(), 8).size(), 1u);
    zq_test::SequenceBytes not_a_sequence(urids.atom_chunk);
    not_a_sequence.event(0, urids.midi_event, note);
    EXPECT_TRUE(frames_read(not_a_sequence.get(), 8).empty());
    EXPECT_TRUE(frames_read(nullptr, 8).empty());
    // Without the host's map nothing can be told apart.
    lumo::Lv2Event e;
    EXPECT_FALSE(lumo::Lv2SequenceReader(frames.get(), 8, lumo::Lv2Urids{}).next(e));
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
    const auto number_of = [&](const Bytes& body, std::uint32_t type = 0) {
        lumo::Lv2Event e;
        e.type = type == 0 ? urids.atom_object : type;
        e.body = body.data();
        e.size = static_cast<std::uint32_t>(body.size());
        const lumo::Lv2AtomObject object(e, urids);
        double value = -1.0;
        return object.is_a(position) && object.find_number(bpm, value) ? value : -1.0;
    };
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(other, urids.atom_float, 1.0f)
                            .property(bpm, urids.atom_float, 128.5f).bytes),
              128.5);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_double, 99.25).bytes), 99.25);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_int, std::int32_t{90}).bytes), 90.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_long, std::int64_t{140}).bytes), 140.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_chunk, 1.0f).bytes), -1.0);
    // A value shorter than its type is not read past its end.
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_double, 1.0f).bytes), -1.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_long, std::int32_t{9}).bytes), -1.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(other).property(bpm, urids.atom_float, 1.0f).bytes), -1.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_float, 1.0f).bytes, urids.atom_blank),
              1.0);
    EXPECT_EQ(number_of(zq_test::ObjectBytes(position).property(bpm, urids.atom_float, 1.0f).bytes, urids.midi_event),
              -1.0);
    // A property whose value claims more bytes than the object has.
    Bytes broken = zq_test::ObjectBytes(position).property(bpm, urids.atom_float, 1.0f).bytes;
    broken[8 + 8] = 0xFF;
    EXPECT_EQ(number_of(broken), -1.0);
}

}  // namespace
