#include "Lv2TestAtoms.h"

#include "lumo/lv2/Lv2MidiOut.h"
#include "lumo/lv2/Lv2SequenceReader.h"
#include "lumo/lv2/Lv2SequenceWriter.h"
#include "lumo/lv2/Lv2Urids.h"
#include "lumo/lv2/MidiMessageSize.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

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
TEST(Lv2MidiOut, WhatDoesNotFitWaitsForTheNextBlock)
{
    zq_test::UridMap map;
    lumo::Lv2Urids urids;
    urids.map_all(map.use(), "urn:test:plugin");
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

}  // namespace
