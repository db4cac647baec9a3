// The effect's editor on the real audio side and artwork, in an off-screen
// window with a pinned clock: how it binds and sets up its controls, and the
// parameter side's changes as the screen shows them. The controls' own
// mechanics are the toolkit's tests; a drag as the host sees it is the
// adapters' (the host tool's drag through the real library, the LV2 editor's
// touches).
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/OffscreenWindow.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace
{

constexpr int kBof = 1;
constexpr int kNuke = 3;

class Editor : public ::testing::Test, protected zq_test::EditorRig
{
protected:
    void open()
    {
        ASSERT_EQ(gui.open(nullptr), 0);
        window.paint_all();
        host->calls.clear();
    }

    // As the adapter does with an accepted change from the host, from any
    // thread; the editor's thread takes it at its next timer tick.
    void automate(int index, float value)
    {
        dsp.use_param(index).set_norm_value(value);
        gui.param_changed(index, value, 100);
    }
    double shown(int knob) { return gui.use_effect_part().use_knob(knob).get_value(); }
};

}  // namespace

// 128 pixels up are half the range; sideways 32 times finer.
TEST_F(Editor, BindsEveryParameterToItsControlSetUpAsTheLayoutSays)
{
    EXPECT_EQ(window.get_content_width(), 512);
    EXPECT_EQ(window.get_window_height(), 384);
    const int params[] = {1, 2, 4, 5};
    const std::int32_t hit_radii[] = {40, 24, 24, 32};
    for (int k = 0; k < 4; ++k)
    {
        const gadu::Knob& knob = gui.use_effect_part().use_knob(k);
        const std::int32_t r = hit_radii[k];
        EXPECT_EQ(knob.get_hit_rect(), (gadu::Rect{-r, -r, r, r}));
        const lumo::MetaControl* meta = gui.use_meta_control(params[k]);
        ASSERT_NE(meta, nullptr);
        EXPECT_EQ(meta->use_control(), &knob);
        EXPECT_EQ(meta->use_param(), &dsp.use_param(params[k]));
        EXPECT_EQ(knob.get_pixels_per_range(), 256);
        EXPECT_EQ(knob.get_fine_factor(), 1.0f / 32.0f);
    }
    EXPECT_EQ(gui.use_meta_control(kNuke)->use_control(), &gui.use_effect_part().use_switch());
    // Tempo has a control that never shows.
    ASSERT_NE(gui.use_meta_control(0), nullptr);
    gadu::ControlInterface* tempo = gui.use_meta_control(0)->use_control();
    EXPECT_FALSE(tempo->is_placed());
    EXPECT_EQ(gui.use_meta_control(6), nullptr);
    EXPECT_EQ(gui.use_meta_control(-1), nullptr);
    // A second build does nothing.
    gui.set_default_state();
    EXPECT_EQ(gui.use_meta_control(0)->use_control(), tempo);
}

TEST_F(Editor, OpeningShowsTheParametersAndTheirDefaultsAndClosingHidesThem)
{
    dsp.use_param(kBof).set_norm_value(0.25f);
    host->can_resize = 1.0;
    ASSERT_EQ(gui.open(nullptr), 0);
    EXPECT_TRUE(window.is_resizable());
    gadu::Knob& bof = gui.use_effect_part().use_knob(0);
    EXPECT_DOUBLE_EQ(bof.get_value(), 0.25);
    EXPECT_EQ(bof.get_default_value(), dsp.use_param(kBof).default_norm);
    EXPECT_TRUE(bof.is_visible());
    EXPECT_TRUE(host->of("set").empty());
    gui.close();
    EXPECT_FALSE(bof.is_visible());
    EXPECT_FALSE(window.use_control_root()->is_visible());
    host->can_resize = 0.0;
    ASSERT_EQ(gui.open(nullptr), 0);
    EXPECT_FALSE(window.is_resizable());
    // Every open shows the whole tree again, the roots included.
    EXPECT_TRUE(window.use_control_root()->is_visible());
    EXPECT_TRUE(window.use_background_root()->is_visible());
}

// Host automation reaches the screen at the next timer tick and redraws knob
// 1 alone; while the editor is closed it shows at the next open exactly so.
TEST_F(Editor, AutomationRedrawsOnlyTheBoundKnobWhetherOpenOrNot)
{
    open();
    const zq_test::Screen at_zero = screen();
    automate(kBof, 0.8f);
    EXPECT_TRUE(window.paint().is_empty());
    wait(0.03);
    const auto open_changes = zq_test::changes_around_bof(at_zero, screen());
    EXPECT_GT(open_changes.first, 100);
    EXPECT_EQ(open_changes.second, 0);
    EXPECT_TRUE(host->of("set").empty());

    automate(kBof, 0.0f);
    wait(0.03);
    gui.close();
    automate(kBof, 0.6f);
    open();
    EXPECT_DOUBLE_EQ(shown(0), 0.6f);
    const auto closed_changes = zq_test::changes_around_bof(at_zero, screen());
    EXPECT_GT(closed_changes.first, 100);
    EXPECT_EQ(closed_changes.second, 0);
}

TEST_F(Editor, TempoChangesOnlyTouchTheHiddenControl)
{
    open();
    automate(0, 0.5f);
    gui.use_inbox().take();
    EXPECT_DOUBLE_EQ(gui.use_meta_control(0)->use_control()->get_value(), 0.5f);
    EXPECT_TRUE(window.paint().is_empty());
    dsp.use_param(0).set_norm_value(0.7f);
    gui.set_tempo(0.0f);
    EXPECT_DOUBLE_EQ(gui.use_meta_control(0)->use_control()->get_value(), 0.7f);
}

TEST_F(Editor, NuclearPowerShowsItsSecondStateFromOneHalfOn)
{
    open();
    for (const float value : {0.49f, 0.5f})
    {
        automate(kNuke, value);
        wait(0.2);
        EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), value < 0.5f ? 0 : 1);
    }
}

// Values and indexes no parameter has change nothing; a learn state reaches
// the bound control at the next tick and redraws it.
TEST_F(Editor, TheParameterSidesCallsReachTheBoundControlAtTheNextTick)
{
    open();
    automate(kBof, 0.3f);
    wait(0.03);
    dsp.use_param(kBof).set_norm_value(0.9f);
    gui.param_changed(kBof, std::numeric_limits<float>::quiet_NaN(), 100);
    gui.param_changed(17, 0.9f, 100);
    gui.param_changed(-1, 0.9f, 100);
    gui.midi_learn_changed(42, 1);
    gui.midi_learn_changed(-3, 1);
    wait(0.03);
    EXPECT_DOUBLE_EQ(shown(0), 0.3f);

    gui.midi_learn_changed(2, 1);
    EXPECT_EQ(gui.use_effect_part().use_knob(1).get_learn_state(), -1);
    gui.use_inbox().take();
    EXPECT_EQ(gui.use_effect_part().use_knob(1).get_learn_state(), 1);
    EXPECT_FALSE(window.get_dirty().is_empty());
}

TEST(ZarquetteGuiFailures, BuildingWithoutAWindowOrAnAudioSideFails)
{
    zarquette::ZarquetteGui gui;
    gui.init();
    EXPECT_THROW(gui.set_default_state(), std::runtime_error);
    EXPECT_EQ(gui.open(nullptr), -1);
}
