// Programs and chunks as the host changes them: every program keeps its own
// values, and the editor's controls hear of each change (whether the editor
// is open or closed is the editor's own business: it shows what its controls
// hold when it opens).
#include "PluginFixture.h"

#include "lumo/BankManager.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace
{

using lumo::vst2::PluginOp;

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

}  // namespace

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
