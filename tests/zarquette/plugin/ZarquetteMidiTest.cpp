#include "PluginFixture.h"
#include "tests/zarquette/AllocationCounter.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/vst2/AudioEffect.h"
#include "lumo/vst2/Vst2MidiDevSelComp.h"

#include <cmath>
#include <vector>

namespace
{

using lumo::vst2::PluginOp;
using Strings = std::vector<std::string>;

// A host's event list of any length, as the host lays it out.
struct EventList
{
    void add(int frame, int status, int d1, int d2, std::int32_t type = lumo::vst2::event_types::midi)
    {
        lumo::vst2::MidiEvent e{};
        e.type = type;
        e.byte_size = sizeof(e);
        e.delta_frames = frame;
        e.midi_data[0] = static_cast<char>(status);
        e.midi_data[1] = static_cast<char>(d1);
        e.midi_data[2] = static_cast<char>(d2);
        events.push_back(e);
    }
    lumo::vst2::Events* build()
    {
        block.assign(2 + events.size(), 0);
        block[0] = static_cast<std::intptr_t>(events.size());
        for (std::size_t i = 0; i < events.size(); ++i)
        {
            block[2 + i] = reinterpret_cast<std::intptr_t>(&events[i]);
        }
        return reinterpret_cast<lumo::vst2::Events*>(block.data());
    }

    std::vector<lumo::vst2::MidiEvent> events;
    std::vector<std::intptr_t> block;
};

class ZarquetteMidi : public PluginFixture
{
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        resume(44100.0f, 64);
    }
    lumo::Vst2Plugin& adapter() { return *static_cast<lumo::Vst2Plugin*>(lumo::AudioEffect::from_aeffect(effect)); }
    void block()
    {
        process(l, r, ol, or_);
        for (float v : ol)
        {
            ASSERT_TRUE(std::isfinite(v));
        }
    }
    void send(EventList& list) { EXPECT_EQ(dispatch(PluginOp::process_events, 0, 0, list.build()), 1); }
    float param(int index) { return effect->get_parameter(effect, index); }

    std::vector<float> l = std::vector<float>(64), r = l, ol = l, or_ = l;
    static void nrpn(EventList& list, int frame, int number, int value)
    {
        list.add(frame, 0xB0, 99, number / 128);
        list.add(frame, 0xB0, 98, number % 128);
        list.add(frame, 0xB0, 6, value / 128);
        list.add(frame, 0xB0, 38, value % 128);
    }
};

TEST_F(ZarquetteMidi, HostEventsDriveTheirParameterByNrpn)
{
    ASSERT_NE(adapter().use_midi_mgr(), nullptr);
    EXPECT_EQ(adapter().use_midi_dispatcher()->get_input_names(), (Strings{"VST MIDI In interface"}));
    EXPECT_EQ(adapter().use_midi_dispatcher()->get_output_names(), (Strings{"VST MIDI Out interface"}));
    EXPECT_EQ(adapter().use_midi_dispatcher()->get_selected_input(), 0);
    EXPECT_EQ(adapter().use_midi_dispatcher()->get_selected_output(), -1);
    EXPECT_GE(host.count(lumo::vst2::HostOp::want_midi), 1);

    EventList list;
    nrpn(list, 10, 2, 16383);
    nrpn(list, 40, 4, 8192);
    send(list);
    block();
    EXPECT_EQ(param(2), 1.0f);
    EXPECT_FLOAT_EQ(param(4), 8192.0f / 16383.0f);
    // Without a selected output nothing goes back to the host.
    block();
    EXPECT_EQ(host.sent_lists, 0);
}

TEST_F(ZarquetteMidi, ProgramSelectionIsEchoedAtTheNextBlockButAutomationIsNot)
{
    ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0);
    effect->set_parameter(effect, 4, 1.0f);
    block();
    EXPECT_EQ(host.sent_lists, 0);

    adapter().use_midi_mgr()->bind(4, 74, 0);
    dispatch(PluginOp::set_program, 0, 0);
    EXPECT_EQ(host.sent_lists, 0);  // nothing before the next block starts
    block();
    ASSERT_EQ(host.sent_lists, 1);
    Strings expected;
    for (int i = 0; i < 6; ++i)
    {
        if (i == 4)
        {
            // The program kept the automated value; controller 74 carries 7 bits.
            ASSERT_EQ(param(4), 1.0f);
            expected.push_back("B0 4A 7F");
            continue;
        }
        const int v = static_cast<int>(std::lrint(2.0 * param(i) * 16383.0 + 0.5)) >> 1;
        char text[4][16];
        std::snprintf(text[0], 16, "B0 63 00");
        std::snprintf(text[1], 16, "B0 62 %02X", i);
        std::snprintf(text[2], 16, "B0 06 %02X", v / 128);
        std::snprintf(text[3], 16, "B0 26 %02X", v % 128);
        expected.insert(expected.end(), {text[0], text[1], text[2], text[3]});
    }
    EXPECT_EQ(host.sent_midi, expected);
    block();
    EXPECT_EQ(host.sent_lists, 1);
}

// A change from the editor goes back out as the NRPN of the parameter it
// changed: with a host order of its own in force, the echo still names the
// parameter (Bof, NRPN 1), while the host hears of it at its host position.
TEST_F(ZarquetteMidi, AnEditorChangeIsEchoedAsItsParametersNrpn)
{
    ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0);
    lumo::HostGuiInterface& editor_service = *adapter().use_gui()->use_host();
    ASSERT_TRUE(editor_service.take(1, 200));
    ASSERT_TRUE(editor_service.set_and_report_param(1, 0.25f, 200));
    block();
    EXPECT_EQ(host.sent_midi, (Strings{"B0 63 00", "B0 62 01", "B0 06 20", "B0 26 00"}));
    editor_service.release(1, 200);

    basic::ConfKeyMulti root("root");
    root.add_key(*basic::ConfKeyFactory().create_key("parameter_reorder_map = { 5 4 3 2 1 0 }"));
    ASSERT_EQ(adapter().use_param_reorder().load_settings(root), 0);
    host.sent_midi.clear();
    ASSERT_TRUE(editor_service.take(1, 200));
    ASSERT_TRUE(editor_service.set_and_report_param(1, 1.0f, 200));
    block();
    EXPECT_EQ(host.sent_midi, (Strings{"B0 63 00", "B0 62 01", "B0 06 7F", "B0 26 7F"}));
    EXPECT_EQ(host.last_automated_index.load(), 4);
    editor_service.release(1, 200);
}

TEST_F(ZarquetteMidi, AHostListHoldsAtMost1024Events)
{
    ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0);
    lumo::MidiMgr& mgr = *adapter().use_midi_mgr();
    for (int i = 0; i < 1024; ++i)
    {
        ASSERT_NE(mgr.raw_message(0, 11, 7, i % 128), 0);
    }
    EXPECT_EQ(mgr.raw_message(0, 11, 7, 1), 0);
    block();
    ASSERT_EQ(host.sent_midi.size(), 1024u);
    EXPECT_EQ(host.sent_midi[1023], "B0 07 7F");
    EXPECT_NE(mgr.raw_message(0, 11, 8, 1), 0);
    block();
    EXPECT_EQ(host.sent_midi.back(), "B0 08 01");
}

TEST_F(ZarquetteMidi, MidiInLearnAndEchoOutAllocateNothing)
{
    ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0);
    lumo::MidiMgr& mgr = *adapter().use_midi_mgr();
    host.keep_midi = false;
    EventList list;
    for (int frame = 0; frame < 64; frame += 4)
    {
        list.add(frame, 0xB0, 74, frame * 2);
        nrpn(list, frame, frame % 6, frame * 200);
    }
    lumo::vst2::Events* events = list.build();
    block();
    const AllocationCounter counter;
    for (int b = 0; b < 200; ++b)
    {
        mgr.set_pending_learn(b % 50 == 0 ? 4 : -1);
        dispatch(PluginOp::process_events, 0, 0, events);
        mgr.send_param(0, b % 6, static_cast<float>(b % 100) / 100.0f);
        block();
    }
    EXPECT_EQ(counter.get_count(), 0);
    EXPECT_EQ(mgr.get_last_learnt_param(), 4);
    EXPECT_GT(host.sent_events, 200);
}

}  // namespace
