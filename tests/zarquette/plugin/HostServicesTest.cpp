#include "PluginFixture.h"

#include "lumo/DspInterface.h"
#include "lumo/HostDspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/PluginInternal.h"
#include "lumo/TempoRecord.h"
#include "lumo/ProgramSlot.h"
#include "lumo/TimeInfoRequest.h"
#include "lumo/SettingKeys.h"
#include "lumo/vst2/HostGuiVst2Win.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "zarquette/ZarquetteDsp.h"
#include "zarquette/gui/ZarquetteGui.h"
#include "zarquette/plugin/ZarquetteRecipe.h"

#include <vector>

namespace
{

using lumo::vst2::HostOp;
using lumo::vst2::PluginOp;

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

}  // namespace
