#include "PluginFixture.h"
#include "tests/zarquette/AllocationCounter.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"

#include <vector>

namespace
{

using lumo::vst2::PluginOp;
using Strings = std::vector<std::string>;

class ZarquetteMidi : public PluginFixture
{
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        resume(44100.0f, 64);
    }
    void send(MidiEventList& list) { EXPECT_EQ(dispatch(PluginOp::process_events, 0, 0, list.build()), 1); }
    float param(int index) { return effect->get_parameter(effect, index); }
    void select_host_output() { ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0); }
};

TEST_F(ZarquetteMidi, HostEventsDriveTheirParameterByNrpn)
{
    EXPECT_GE(host.count(lumo::vst2::HostOp::want_midi), 1);
    MidiEventList list;
    list.nrpn(10, 2, 16383).nrpn(40, 4, 8192);
    send(list);
    block();
    EXPECT_EQ(param(2), 1.0f);
    EXPECT_FLOAT_EQ(param(4), 8192.0f / 16383.0f);
    // Without a selected output nothing goes back to the host.
    block();
    EXPECT_EQ(host.sent_lists, 0);
}

// Each value of the program as its parameter's NRPN (the bytes of every
// value, and a bound controller's, are the MIDI end-to-end run's): the
// program kept the automated Oignons.
TEST_F(ZarquetteMidi, ProgramSelectionIsEchoedAtTheNextBlockButAutomationIsNot)
{
    select_host_output();
    effect->set_parameter(effect, 4, 1.0f);
    block();
    EXPECT_EQ(host.sent_lists, 0);

    dispatch(PluginOp::set_program, 0, 0);
    EXPECT_EQ(host.sent_lists, 0);  // nothing before the next block starts
    block();
    ASSERT_EQ(host.sent_lists, 1);
    ASSERT_EQ(host.sent_midi.size(), 24u);
    EXPECT_EQ(Strings(host.sent_midi.begin() + 16, host.sent_midi.begin() + 20),
              (Strings{"B0 63 00", "B0 62 04", "B0 06 7F", "B0 26 7F"}));
    block();
    EXPECT_EQ(host.sent_lists, 1);
}

// A change from the editor goes back out as the NRPN of the parameter it
// changed: with a host order of its own in force, the echo still names the
// parameter (Bof, NRPN 1), while the host hears of it at its host position
// and sets parameters by it. (The order from the user's settings file at
// start-up is an end-to-end info run.)
TEST_F(ZarquetteMidi, AnEditorChangeIsEchoedAsItsParametersNrpn)
{
    select_host_output();
    lumo::HostGuiInterface& editor_service = *adapter().use_gui()->use_host();
    // The editor's learn menu works on the plug-in's own manager.
    EXPECT_EQ(editor_service.use_midi_mgr(), adapter().use_midi_mgr());
    ASSERT_TRUE(editor_service.take(1, 200));
    ASSERT_TRUE(editor_service.set_and_report_param(1, 0.25f, 200));
    block();
    EXPECT_EQ(host.sent_midi, (Strings{"B0 63 00", "B0 62 01", "B0 06 20", "B0 26 00"}));
    editor_service.release(1, 200);

    basic::ConfKeyMulti root("root");
    root.add_key(*basic::ConfKeyFactory().create_key("parameter_reorder_map = { 5 4 3 2 1 0 }"));
    ASSERT_EQ(adapter().use_param_reorder().load_settings(root), 0);
    effect->set_parameter(effect, 0, 0.5f);
    EXPECT_EQ(adapter().use_dsp()->use_param(5).get_norm(), 0.5f);
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
    select_host_output();
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
    select_host_output();
    lumo::MidiMgr& mgr = *adapter().use_midi_mgr();
    host.keep_midi = false;
    MidiEventList list;
    for (int frame = 0; frame < 64; frame += 4)
    {
        list.add(frame, 0xB0, 74, frame * 2).nrpn(frame, frame % 6, frame * 200);
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
