// The whole plug-in through its entry point, as a host drives it: the host's
// values, chunks and programs at their edges, MIDI in and out, and audio
// under the host's odd habits.
// What it tells a host (identity, names, pins, can-dos) is the end-to-end
// info run's business; the parts' own rules are their folders' tests.
#include "PluginFixture.h"

#include "tests/support/Signal.h"
#include "tests/zarquette/AllocationCounter.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/BankManager.h"
#include "lumo/DspInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostDspInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/PluginInternal.h"
#include "lumo/ProgramSlot.h"
#include "lumo/SettingKeys.h"
#include "lumo/TempoRecord.h"
#include "lumo/TimeInfoRequest.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/vst2/HostGuiVst2Win.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"
#include "zarquette/plugin/ZarquetteRecipe.h"

#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace
{

using lumo::vst2::HostOp;
using lumo::vst2::PluginOp;
using zq_test::all_clean;
using zq_test::peak;
using Strings = std::vector<std::string>;

// An old host, and a failure once the adapter's base is built (the audio side
// and the editor must then be freed exactly once: the sanitizer build sees a
// second free or a leak), get no plug-in; a host that asks again gets one.
TEST(ZarquetteEntry, FailuresGiveTheHostNoPluginAndFreeEverythingOnce)
{
    FakeHost host;
    host.version = 0;
    EXPECT_EQ(host.open_plugin(), nullptr);
    host.version = 2400;
    host.fail_vendor_request = true;
    EXPECT_EQ(host.open_plugin(), nullptr);
    host.fail_vendor_request = false;
    lumo::vst2::AEffect* effect = host.open_plugin();
    ASSERT_NE(effect, nullptr);
    FakeHost::close_plugin(effect);
}

using ZarquettePlugin = PluginFixture;

// The plug-in starts from the template program (every value 0, named
// "Default"), not from the parameters' defaults: with a host that has no
// tempo of its own, the tempo parameter leads.
TEST_F(ZarquettePlugin, StartsFromTheTemplateProgramAndAnswersNothingOutsideItsRanges)
{
    close();
    host.time_info.flags = 0;
    open();
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(effect->get_parameter(effect, i), 0.0f) << i;
    }
    EXPECT_EQ(text_of(PluginOp::get_param_display, 0), "60.000");
    for (const int index : {-1, 6})
    {
        EXPECT_EQ(text_of(PluginOp::get_param_name, index), "");
        lumo::vst2::ParameterProperties props{};
        EXPECT_EQ(dispatch(PluginOp::get_parameter_properties, index, 0, &props), 0);
    }
    lumo::vst2::PinProperties pin{};
    EXPECT_EQ(dispatch(PluginOp::get_output_properties, 2, 0, &pin), 0);
    std::string upper = "ReceiveVstTimeInfo";
    EXPECT_EQ(dispatch(PluginOp::can_do, 0, 0, upper.data()), 0);
}

TEST_F(ZarquettePlugin, HostValuesAndTextsAreSanitised)
{
    effect->set_parameter(effect, 5, 7.0f);
    EXPECT_EQ(effect->get_parameter(effect, 5), 1.0f);
    effect->set_parameter(effect, 5, -1.0f);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.0f);
    effect->set_parameter(effect, 5, 0.5f);
    effect->set_parameter(effect, 5, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.5f);
    effect->set_parameter(effect, 99, 0.5f);  // ignored
    EXPECT_EQ(effect->get_parameter(effect, 99), 0.0f);

    // Texts that parse are the validation run's round trips.
    std::string fifty = "50";
    std::string junk = "beaucoup";
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 5, 0, junk.data()), 0);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.5f);
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 5, 0, nullptr), 1);
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 6, 0, fifty.data()), 0);
}

// Both chunks' round trips are the host tool's validation runs, their sizes
// the records' own tests; here a broken chunk is refused whole.
TEST_F(ZarquettePlugin, BrokenChunksChangeNothing)
{
    effect->set_parameter(effect, 2, 0.125f);
    void* data = nullptr;
    const auto size = dispatch(PluginOp::get_chunk, 0, 0, &data);
    std::vector<std::uint8_t> copy(static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + size);
    effect->set_parameter(effect, 2, 0.5f);
    // Truncated: the counts inside promise more than the host gives.
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 0, 50, copy.data()), 0);
    std::memset(copy.data(), 0, 4);  // a bank of no programs
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 0, size, copy.data()), 0);
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 1, 0, copy.data()), 0);
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 1, 10, nullptr), 0);
    EXPECT_EQ(effect->get_parameter(effect, 2), 0.5f);
}

// Hosts pass buffers of the classic sizes: short texts fit in 23 bytes with
// their zero, the effect name in 31; a byte more would overrun them. The
// program keeps its whole name; only the copy for the host is cut.
TEST_F(ZarquettePlugin, ProgramsAndTextsStayWithinTheirRangesAndTheHostsBuffers)
{
    std::string name(40, 'n');
    dispatch(PluginOp::set_program_name, 0, 0, name.data());
    char text[64];
    std::memset(text, 'x', sizeof(text));
    dispatch(PluginOp::get_program_name, 0, 0, text);
    EXPECT_EQ(std::string(text), std::string(22, 'n'));
    EXPECT_EQ(text[23], 'x');
    EXPECT_EQ(dispatch(PluginOp::get_program_name_indexed, 0, 0, text), 1);
    EXPECT_EQ(std::string(text), name);
    EXPECT_EQ(dispatch(PluginOp::get_program_name_indexed, 1, 0, text), 0);
    for (const PluginOp op : {PluginOp::get_param_label, PluginOp::get_param_display, PluginOp::get_param_name})
    {
        std::memset(text, 'x', sizeof(text));
        dispatch(op, 1, 0, text);
        EXPECT_LE(std::strlen(text), 22u);
        EXPECT_EQ(text[23], 'x');
    }
    dispatch(PluginOp::set_program, 0, 5);  // out of range: nothing
    EXPECT_EQ(dispatch(PluginOp::get_program), 0);
    EXPECT_EQ(dispatch(PluginOp::copy_program, 0), 1);
    EXPECT_EQ(dispatch(PluginOp::copy_program, 1), 0);
}

// A program holds what the parameter changes stored in it, not whatever the
// audio side drifted to on its own (here the tempo it follows from the host):
// copying the current program onto itself leaves the bank as it was.
TEST_F(ZarquettePlugin, ProgramsHoldTheStoredValuesNotTheAudioSidesDrift)
{
    host.time_info.tempo = 100.0;
    block();
    ASSERT_NEAR(effect->get_parameter(effect, 0), (100.0 - 60.0) / 180.0, 1e-6);
    effect->set_parameter(effect, 3, 0.75f);

    EXPECT_EQ(dispatch(PluginOp::copy_program, 0), 1);
    const lumo::ProgramSlot& copied = adapter().use_bank().use_program(0);
    EXPECT_EQ(copied.get_value(0), 0.0f);
    EXPECT_EQ(copied.get_value(3), 0.75f);
}

TEST_F(ZarquettePlugin, AutomationLimitFollowsTheHostsBudget)
{
    host.automatable_params = 1;
    resume();
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 0), 1);
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 1), 0);
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 6), 1);
}

// ---- Programs ------------------------------------------------------------------

// Programs and chunks as the host changes them: every program keeps its own
// values, and the editor's controls hear of each change (whether the editor
// is open or closed is the editor's own business: it shows what its controls
// hold when it opens).

class Programs : public PluginFixture
{
protected:
    // What the editor's controls show once the editor's thread has taken
    // what the parameters sent it (its inbox, emptied at each timer tick).
    double shown(int control)
    {
        auto& gui = dynamic_cast<zarquette::ZarquetteGui&>(*adapter().use_gui());
        gui.use_inbox().take();
        return control < 0 ? gui.use_effect_part().use_switch().get_value()
                           : gui.use_effect_part().use_knob(control).get_value();
    }

    // A chunk of this plug-in's bank with its program 0 holding "Bof" at bof
    // and "Nuclear Power" at nuke, and a program 1 with them swapped.
    std::vector<std::uint8_t> bank_chunk(float bof, float nuke) const
    {
        lumo::ProgramSlot program;
        program.set_nbr_values(6);
        lumo::BankManager bank;
        for (int i = 0; i < 2; ++i)
        {
            program.set_value(1, i == 0 ? bof : nuke);
            program.set_value(3, i == 0 ? nuke : bof);
            bank.set_nbr_programs(i + 1);
            bank.set_program(i, program);
        }
        std::vector<std::uint8_t> bytes(bank.get_size());
        EXPECT_EQ(bank.write(bytes.data(), bytes.size()), 0);
        return bytes;
    }
};

TEST_F(Programs, ChunksAndProgramChangesReachTheEditorsControls)
{
    std::vector<std::uint8_t> chunk = bank_chunk(0.25f, 1.0f);
    ASSERT_EQ(dispatch(PluginOp::set_chunk, 0, static_cast<std::intptr_t>(chunk.size()), chunk.data()), 1);
    EXPECT_DOUBLE_EQ(shown(0), 0.25);
    EXPECT_DOUBLE_EQ(shown(-1), 1.0);
    dispatch(PluginOp::set_program, 0, 1);
    EXPECT_DOUBLE_EQ(shown(0), 1.0);
    EXPECT_DOUBLE_EQ(shown(-1), 0.25);
}

// Each program keeps its own values through a round of switching, the
// first value (the tempo, here with a host that reports none) included.
TEST_F(Programs, SwitchingProgramsKeepsEachProgramsValues)
{
    close();
    host.has_time_info = false;
    open();
    std::vector<std::uint8_t> chunk = bank_chunk(0.25f, 0.75f);
    ASSERT_EQ(dispatch(PluginOp::set_chunk, 0, static_cast<std::intptr_t>(chunk.size()), chunk.data()), 1);
    effect->set_parameter(effect, 0, 0.5f);
    dispatch(PluginOp::set_program, 0, 1);
    effect->set_parameter(effect, 0, 0.125f);
    dispatch(PluginOp::set_program, 0, 0);
    EXPECT_EQ(effect->get_parameter(effect, 0), 0.5f);
    EXPECT_EQ(effect->get_parameter(effect, 1), 0.25f);
    dispatch(PluginOp::set_program, 0, 1);
    EXPECT_EQ(effect->get_parameter(effect, 0), 0.125f);
    EXPECT_EQ(effect->get_parameter(effect, 1), 0.75f);
    dispatch(PluginOp::set_program, 0, 0);
    EXPECT_EQ(effect->get_parameter(effect, 0), 0.5f);
}

// ---- MIDI ----------------------------------------------------------------------


class ZarquetteMidi : public PluginFixture
{
protected:
    void SetUp() override
    {
        PluginFixture::SetUp();
        resume(44100.0f, 64);
    }
    float param(int index) { return effect->get_parameter(effect, index); }
    void select_host_output() { ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0); }
};

TEST_F(ZarquetteMidi, HostEventsDriveTheirParameterByNrpn)
{
    EXPECT_GE(host.count(lumo::vst2::HostOp::want_midi), 1);
    MidiEventList list;
    list.nrpn(10, 2, 16383).nrpn(40, 4, 8192);
    EXPECT_EQ(dispatch(PluginOp::process_events, 0, 0, list.build()), 1);
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

// ---- The host's services ---------------------------------------------------------


// The plug-in in a fake host, reached from inside: its adapter and the host
// services its audio side uses.
class HostServices : public PluginFixture
{
protected:
    lumo::HostDspInterface& services() { return *adapter().use_dsp()->use_host(); }
};

// The block's request for the host's tempo, and whether the host can give
// one: a host that once reported a tempo is not asked again, one that said no
// is.
TEST_F(HostServices, TimeRequestsAskForTheTempoAndCanTempoIsKeptAfterAYes)
{
    // A host without a tempo from the start (the plug-in asks while it opens).
    close();
    host.has_time_info = false;
    open();
    lumo::TimeInfoRequest request;
    request.want_tempo = true;
    services().get_time_info(request);
    EXPECT_TRUE(request.failed);
    const int before = host.count(HostOp::get_time);
    EXPECT_EQ(services().get_setting_num("can_tempo"), 0.0);
    EXPECT_EQ(services().get_setting_num("can_tempo"), 0.0);
    EXPECT_EQ(host.count(HostOp::get_time), before + 2);
    EXPECT_EQ(host.last_time_mask.load(), lumo::vst2::time_info_flags::tempo_valid);

    host.has_time_info = true;
    host.time_info.flags = 0;  // a time record, but no tempo in it
    EXPECT_EQ(services().get_setting_num("can_tempo"), 0.0);
    services().get_time_info(request);
    EXPECT_FALSE(request.failed);
    EXPECT_FALSE(request.want_tempo);
    host.time_info.flags = lumo::vst2::time_info_flags::tempo_valid;
    host.time_info.tempo = 133.0;
    request.want_tempo = true;
    services().get_time_info(request);
    EXPECT_TRUE(request.want_tempo);
    EXPECT_EQ(request.tempo, 133.0);

    EXPECT_EQ(services().get_setting_num("can_tempo"), 1.0);
    host.has_time_info = false;
    const int after_yes = host.count(HostOp::get_time);
    EXPECT_EQ(services().get_setting_num("can_tempo"), 1.0);
    EXPECT_EQ(host.count(HostOp::get_time), after_yes);
}

// Every host tempo handed to the audio side lands in the plug-in's tempo
// record: a mark written there between blocks survives only the blocks in
// which the host's tempo did not change. Folding a tempo into the range is
// the LV2 adapter's test, where the host's tempo also meets a tempo port.
TEST_F(HostServices, TheHostTempoReachesTheEffectOnlyWhenItChanges)
{
    auto* core = dynamic_cast<lumo::PluginInternal*>(adapter().use_dsp());
    ASSERT_NE(core, nullptr);
    lumo::TempoRecord& record = *core->use_tempo_record();
    std::vector<float> seen;
    for (const double bpm : {120.0, 120.0, 120.0, 120.5, 120.5})
    {
        record.bpm.store(-1.0f);
        host.time_info.tempo = bpm;
        block();
        seen.push_back(record.bpm.load());
    }
    EXPECT_EQ(seen, (std::vector<float>{120.0f, -1.0f, -1.0f, 120.5f, -1.0f}));
    EXPECT_NEAR(effect->get_parameter(effect, 0), (120.5 - 60.0) / 180.0, 1e-6);
    // The editor's hidden tempo control hears of it at the host's next idle.
    auto& gui = dynamic_cast<zarquette::ZarquetteGui&>(*adapter().use_gui());
    dispatch(PluginOp::edit_idle);
    EXPECT_DOUBLE_EQ(gui.use_meta_control(0)->use_control()->get_value(), effect->get_parameter(effect, 0));
}

TEST_F(HostServices, HostAutomationWaitsWhileTheEditorHoldsAParameter)
{
    effect->set_parameter(effect, 2, 0.25f);
    ASSERT_TRUE(services().take(2, 200));  // the user grabs the knob
    ASSERT_TRUE(services().set_and_report_param(2, 0.5f, 200));
    effect->set_parameter(effect, 2, 0.75f);
    EXPECT_EQ(effect->get_parameter(effect, 2), 0.5f);
    services().release(2, 200);
    effect->set_parameter(effect, 2, 0.75f);
    EXPECT_EQ(effect->get_parameter(effect, 2), 0.75f);
}

// A program chosen from inside the plug-in is reported to the host value by
// value; one chosen by the host is not echoed back, and lets go of the
// parameters at once.
TEST_F(HostServices, ProgramChangesReportAndReleaseAsTheirSourceNeeds)
{
    lumo::ProgramSlot program = adapter().use_bank().use_program(0);
    for (int i = 0; i < program.get_nbr_values(); ++i)
    {
        program.set_value(i, 0.125f * static_cast<float>(i));
    }
    const int automated = host.count(HostOp::automate);
    const int displays = host.count(HostOp::update_display);
    services().set_program(program, 200);
    EXPECT_EQ(host.count(HostOp::automate), automated + 6);
    EXPECT_EQ(host.count(HostOp::update_display), displays + 1);
    EXPECT_EQ(host.last_automated_value.load(), 0.625f);
    EXPECT_EQ(effect->get_parameter(effect, 3), 0.375f);
    // Still held by the program's level: host automation waits.
    EXPECT_FALSE(services().is_free(3, 100));

    dispatch(PluginOp::set_program, 0, 0);
    EXPECT_EQ(host.count(HostOp::automate), automated + 6);
    EXPECT_EQ(host.count(HostOp::update_display), displays + 2);
    EXPECT_TRUE(services().is_free(3, 100));
}

// Live wants edits closed from its own idle calls, never from another thread;
// another product of the same vendor gets the background thread.
TEST_F(HostServices, IdleCallsCloseTheGesturesWhereTheHostForbidsTheBackgroundThread)
{
    close();
    host.vendor = "ableton";
    host.product = "LIVE";
    open();
    EXPECT_FALSE(adapter().is_using_bkg_thread());
    EXPECT_EQ(adapter().use_bkg_container().get_size(), 0);
    ASSERT_TRUE(adapter().take(1, 200));
    ASSERT_TRUE(adapter().set_and_report_param(1, 0.5f, 200));
    EXPECT_EQ(host.last_begin_edit.load(), 1);
    EXPECT_EQ(dispatch(PluginOp::idle), 1);
    EXPECT_EQ(host.last_end_edit.load(), -1);  // still held
    adapter().release(1, 200);
    dispatch(PluginOp::idle);
    EXPECT_EQ(host.last_end_edit.load(), 1);

    close();
    host.product = "Live Recorder";
    open();
    EXPECT_TRUE(adapter().is_using_bkg_thread());
}

// The editor's window may be sized where the host can size it (the
// framework's resizing for editors that ask is no path of this plug-in's).
TEST_F(HostServices, TheEditorsWindowIsResizableWhereTheHostCanSizeIt)
{
    lumo::HostGuiVst2Win editor_services;
    editor_services.set_adapter(&adapter());
    for (const bool can : {false, true})
    {
        host.can_size_window = can;
        EXPECT_EQ(editor_services.get_setting_num(lumo::setting_key::can_resize_window), can ? 1.0 : 0.0);
    }
}

// The effect with its parameters hidden from the host. (The category's other
// spellings are the framework's, for effects of other kinds: this one's is
// the end-to-end info run's.)
class HiddenParamsDsp : public zarquette::ZarquetteDsp
{
public:
    double get_setting_num(const char* key) const override
    {
        return lumo::is_setting_key(key, lumo::setting_key::hide_parameters) ? 1.0 : ZarquetteDsp::get_setting_num(key);
    }
};

lumo::DspInterface* create_hidden_params_dsp()
{
    return new HiddenParamsDsp;
}

class HiddenParameters : public PluginFixture
{
protected:
    HiddenParameters()
    {
        hidden.create_dsp = &create_hidden_params_dsp;
        recipe = &hidden;
    }

    lumo::Vst2PluginRecipe hidden = zarquette::get_vst2_recipe();
};

// The host sees none, and hears of no change, neither as automation nor as
// the MIDI echo of a selected output.
TEST_F(HiddenParameters, AreNeitherShownNorReportedNorEchoed)
{
    EXPECT_EQ(effect->num_params, 0);
    effect->set_parameter(effect, 0, 0.5f);
    EXPECT_EQ(effect->get_parameter(effect, 0), 0.0f);
    ASSERT_EQ(adapter().use_midi_dispatcher()->select_output(0), 0);
    const int automated = host.count(HostOp::automate);
    ASSERT_TRUE(adapter().set_and_report_param(2, 0.5f, 200));
    EXPECT_EQ(adapter().use_dsp()->use_param(2).get_norm(), 0.5f);
    block();
    EXPECT_EQ(host.count(HostOp::automate), automated);
    EXPECT_EQ(host.count(HostOp::begin_edit), 0);
    EXPECT_TRUE(host.sent_midi.empty());
}

// ---- Audio ---------------------------------------------------------------------

class ZarquetteAudio : public PluginFixture
{
protected:
    void SetUp() override
    {
        // 10:00 local time on a cat day.
        clock.set_local_time(sys::LocalTime{2026, 11, 9, 10, 0, 0});
        PluginFixture::SetUp();
        effect->set_parameter(effect, 2, 1.0f);  // Gauloises: full level
        effect->set_parameter(effect, 4, 1.0f);  // Oignons: many recordings
        resume();
    }

    // Renders a second of noise input in blocks of 256, checking every block
    // for NaN, infinities and denormals; returns the peak.
    float render()
    {
        std::vector<float> ol(256), orr(256);
        float p = 0.0f;
        for (int b = 0; b < 173; ++b)
        {
            std::vector<float> l = noise.take(256);
            std::vector<float> r = noise.take(256);
            process(l, r, ol, orr);
            EXPECT_TRUE(all_clean(ol) && all_clean(orr));
            p = std::max({p, peak(ol), peak(orr)});
            clock.advance(256 / 44100.0);
        }
        return p;
    }

    sys::ClockPin clock{1000.0};
    zq_test::Noise noise;
};

// NaN input does not poison the output, nor do outputs that alias the inputs.
TEST_F(ZarquetteAudio, NanInputAndInPlaceBuffersGiveCleanOutput)
{
    std::vector<float> l(256, std::numeric_limits<float>::quiet_NaN()), r(l), ol(256), orr(256);
    for (int b = 0; b < 50; ++b)
    {
        process(l, r, ol, orr);
        ASSERT_TRUE(all_clean(ol) && all_clean(orr));
    }
    EXPECT_GT(render(), 0.0f);
    l.assign(1000, 0.25f);
    r.assign(1000, -0.25f);
    float* in[2] = {l.data(), r.data()};
    for (int b = 0; b < 100; ++b)
    {
        effect->process_replacing(effect, in, in, 1000);
        ASSERT_TRUE(all_clean(l) && all_clean(r));
    }
}

// A host that hands null channel pointers gets silence wherever it can take
// it, never the stale contents of its own buffers.
TEST_F(ZarquetteAudio, NullChannelPointersGiveSilence)
{
    render();  // the engines hold sound
    std::vector<float> l(256, 0.25f), ol(256), orr(256);
    float* in[2] = {l.data(), l.data()};
    float* out[2] = {ol.data(), orr.data()};
    float* no_in[2] = {nullptr, nullptr};
    float* right_out_only[2] = {nullptr, orr.data()};
    const auto silent_after = [&](float** inputs, float** outputs) {
        std::fill(ol.begin(), ol.end(), 0.5f);
        std::fill(orr.begin(), orr.end(), 0.5f);
        effect->process_replacing(effect, inputs, outputs, 256);
        return peak(orr) == 0.0f && (outputs[0] == nullptr || peak(ol) == 0.0f);
    };
    EXPECT_TRUE(silent_after(nullptr, out));
    EXPECT_TRUE(silent_after(no_in, out));
    EXPECT_TRUE(silent_after(in, right_out_only));
    // The accumulating call adds silence: nothing.
    effect->process(effect, nullptr, out, 256);
    EXPECT_EQ(ol[0], 0.5f);
    effect->process_replacing(effect, in, nullptr, 256);
    EXPECT_GT(render(), 0.0f);
}

// The unconnected second output is the host's: nothing is written there.
TEST_F(ZarquetteAudio, OnlyTheLeftChannelsConnected)
{
    host.second_input_connected = false;
    host.second_output_connected = false;
    std::vector<float> l(300, 0.25f), r(300, 0.25f), ol(300), orr(300, 9.0f);
    for (int b = 0; b < 300; ++b)
    {
        process(l, r, ol, orr);
    }
    EXPECT_GT(peak(ol), 0.0f);
    EXPECT_EQ(orr, std::vector<float>(300, 9.0f));
}

}  // namespace
