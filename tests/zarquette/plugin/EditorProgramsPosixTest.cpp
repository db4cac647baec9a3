// Programs and chunks as the host changes them, seen by the editor: an open
// editor's knobs follow at its next timer tick, a closed one shows the new
// values when it opens. The editor's window here is the off-screen one.
#include "PluginFixture.h"

#include "gadu/OffscreenWindow.h"
#include "lumo/BankManager.h"
#include "sys/ClockPin.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace
{

using lumo::vst2::PluginOp;

class EditorPrograms : public PluginFixture
{
protected:
    zarquette::ZarquetteGui& gui() const
    {
        const auto& adapter = *static_cast<lumo::Vst2Plugin*>(lumo::AudioEffect::from_aeffect(effect));
        return dynamic_cast<zarquette::ZarquetteGui&>(*adapter.use_gui());
    }
    double bof_shown() const { return gui().use_effect_part().use_knob(0).get_value(); }
    double switch_shown() const { return gui().use_effect_part().use_switch().get_value(); }

    void open_editor() { ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, &host), 1); }

    // One tick of the editor's timer, which takes what the parameters sent it.
    void tick()
    {
        now += 0.02;
        pin.set_seconds(now);
        auto& window = dynamic_cast<gadu::OffscreenWindow&>(*gui().use_window());
        window.set_time(now);
        window.run_timers(0.02);
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

    double now = 50.0;
    sys::ClockPin pin{50.0};
};

}  // namespace

TEST_F(EditorPrograms, ChunksAndProgramChangesMoveTheKnobsWhileOpen)
{
    open_editor();
    std::vector<std::uint8_t> chunk = bank_chunk(0.25f, 1.0f);
    ASSERT_EQ(dispatch(PluginOp::set_chunk, 0, static_cast<std::intptr_t>(chunk.size()), chunk.data()), 1);
    tick();
    EXPECT_DOUBLE_EQ(bof_shown(), 0.25);
    EXPECT_DOUBLE_EQ(switch_shown(), 1.0);

    dispatch(PluginOp::set_program, 0, 1);
    tick();
    EXPECT_DOUBLE_EQ(bof_shown(), 1.0);
    EXPECT_DOUBLE_EQ(switch_shown(), 0.25);
    dispatch(PluginOp::edit_close);
}

// Each program keeps its own values through a round of switching, the
// first value (the tempo, here with a host that reports none) included.
TEST_F(EditorPrograms, SwitchingProgramsKeepsEachProgramsValues)
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

TEST_F(EditorPrograms, WhatChangedWhileClosedShowsAtTheNextOpen)
{
    open_editor();
    dispatch(PluginOp::edit_close);
    std::vector<std::uint8_t> chunk = bank_chunk(0.75f, 0.0f);
    ASSERT_EQ(dispatch(PluginOp::set_chunk, 0, static_cast<std::intptr_t>(chunk.size()), chunk.data()), 1);
    open_editor();
    EXPECT_DOUBLE_EQ(bof_shown(), 0.75);
    dispatch(PluginOp::edit_close);

    dispatch(PluginOp::set_program, 0, 1);
    open_editor();
    EXPECT_DOUBLE_EQ(bof_shown(), 0.0);
    EXPECT_DOUBLE_EQ(switch_shown(), 0.75);
    dispatch(PluginOp::edit_close);
}
