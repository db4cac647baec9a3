// The effect's editor on the real audio side and artwork, in an off-screen
// window with a pinned clock: how it binds and sets up its controls, and the
// parameter side's changes as the screen shows them. The controls' own
// mechanics are the toolkit's tests; a drag as the host sees it is the
// adapters' (the host tool's drag through the real library, the LV2 editor's
// touches).
#include "zarquette/gui/MidiLearn.h"
#include "zarquette/gui/MidiLearnMenu.h"
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/MenuItem.h"
#include "gadu/OffscreenWindow.h"
#include "lumo/midi/MidiMgr.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using gadu::mouse_button::right;
using zarquette::MidiLearn;
using zq_test::kBofX;
using zq_test::kBofY;

constexpr int kBof = 1;
constexpr int kNuke = 3;
constexpr int kSwitchX = 344;
constexpr int kSwitchY = 84;

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

// MIDI learn from the editor: the right button's menu, a learn that
// completes on the "audio thread" (here the manager's map_controller, called
// directly), and what the controls show.
class MidiLearnEditor : public Editor
{
protected:
    MidiLearnEditor()
    {
        mgr.set_dsp(&dsp);
        host->midi_mgr = &mgr;
    }

    // One tick of the editor's 20 ms timer.
    void tick() { wait(0.02); }

    // Right press and release at (x, y); the menu it popped up, or null.
    const gadu::Menu* right_click(int x, int y)
    {
        const std::size_t before = window.use_menu_requests().size();
        window.press(x, y, right);
        window.release(x, y, 0);
        return window.use_menu_requests().size() > before ? window.use_menu_requests().back().use_menu() : nullptr;
    }

    // As the platform does once the menu has gone.
    void choose(const gadu::MenuItem& item) { gui.use_learn_menu().use_root().find_item(item.get_id())->choose(); }

    // A controller that reaches the manager on the audio thread.
    void controller(std::int32_t id)
    {
        int index = -1;
        float value = 0.0f;
        mgr.map_controller(id, 8192, index, value);
    }

    static std::vector<std::string> labels(const gadu::Menu& menu)
    {
        std::vector<std::string> found;
        for (const auto& node : menu.use_root().use_nodes())
        {
            found.push_back(node->get_label());
        }
        return found;
    }

    gadu::ControlInterface& bof() { return gui.use_effect_part().use_knob(0); }
    bool marker_on(const gadu::ControlInterface& control) const
    {
        return control.is_highlight_state_on(zarquette::GuiEffect::learn_marker);
    }

    lumo::MidiMgr mgr;
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

// Values and indexes no parameter has change nothing; the switch shows its
// second state from one half on; a learn state reaches the bound control at
// the next tick and redraws it.
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
    for (const float value : {0.49f, 0.5f})
    {
        automate(kNuke, value);
        wait(0.2);
        EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), value < 0.5f ? 0 : 1);
    }

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

// ---- MIDI learn ----------------------------------------------------------------


TEST_F(MidiLearnEditor, RightClickShowsTheMenuOfTheParameterAndItsBinding)
{
    mgr.bind(kNuke, lumo::MidiMgr::nrpn_selector, 2);
    open();
    const gadu::Menu* menu = right_click(kBofX, kBofY);
    ASSERT_EQ(menu, &gui.use_learn_menu());
    EXPECT_EQ(gui.use_learn_menu().get_param(), kBof);
    EXPECT_EQ(labels(*menu),
              (std::vector<std::string>{"Learn MIDI controller", "Forget MIDI controller", "", "No MIDI controller"}));
    EXPECT_TRUE(gui.use_learn_menu().use_binding_item().is_disabled());
    EXPECT_TRUE(gui.use_learn_menu().use_forget_item().is_disabled());
    EXPECT_FALSE(gui.use_learn_menu().use_learn_item().is_disabled());

    menu = right_click(kSwitchX, kSwitchY);
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(gui.use_learn_menu().get_param(), kNuke);
    EXPECT_EQ(gui.use_learn_menu().use_binding_item().get_label(), "NRPN 2");
    EXPECT_FALSE(gui.use_learn_menu().use_forget_item().is_disabled());

    mgr.bind(kBof, 74, 0);
    right_click(kBofX, kBofY);
    EXPECT_EQ(gui.use_learn_menu().use_binding_item().get_label(), "CC 74");
}

TEST_F(MidiLearnEditor, TheRightButtonNeitherTurnsAKnobNorTakesTheParameter)
{
    open();
    const double before = bof().get_value();
    window.press(kBofX, kBofY, right);
    window.move(kBofX, kBofY - 100);
    window.release(kBofX, kBofY - 100, 0);
    tick();
    EXPECT_EQ(bof().get_value(), before);
    EXPECT_FALSE(window.holds_capture());
    EXPECT_TRUE(host->of("take").empty());
}

TEST_F(MidiLearnEditor, ALearnWaitsThenBindsAtTheNextTickAgainCompletesTwiceCancelsAndForgettingUnbinds)
{
    open();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::unbound);
    right_click(kBofX, kBofY);
    choose(gui.use_learn_menu().use_learn_item());
    EXPECT_EQ(mgr.get_pending_learn(), kBof);
    tick();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::waiting);

    controller(74 << 16);
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::waiting);
    tick();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::bound);
    EXPECT_TRUE(marker_on(bof()));
    EXPECT_EQ(mgr.get_id(kBof), 74 << 16);
    right_click(kBofX, kBofY);
    EXPECT_EQ(gui.use_learn_menu().use_binding_item().get_label(), "CC 74");
    // Learning the same controller again completes; choosing learn twice cancels.
    choose(gui.use_learn_menu().use_learn_item());
    controller(74 << 16);
    tick();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::bound);
    choose(gui.use_learn_menu().use_learn_item());
    right_click(kBofX, kBofY);
    EXPECT_TRUE(gui.use_learn_menu().use_learn_item().is_checked());
    choose(gui.use_learn_menu().use_learn_item());
    EXPECT_EQ(mgr.get_pending_learn(), -1);

    choose(gui.use_learn_menu().use_forget_item());
    EXPECT_EQ(mgr.get_id(kBof), -1);
    EXPECT_EQ(mgr.get_pending_learn(), -1);
    tick();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::unbound);
    EXPECT_FALSE(marker_on(bof()));
    controller(74 << 16);
    EXPECT_EQ(mgr.get_id(kBof), -1);
}

TEST_F(MidiLearnEditor, AWaitingMarkerBlinksAndArmingAnotherControlStopsIt)
{
    open();
    right_click(kBofX, kBofY);
    choose(gui.use_learn_menu().use_learn_item());
    int lit = 0;
    int dark = 0;
    for (int i = 0; i < 60; ++i)
    {
        tick();
        ++(marker_on(bof()) ? lit : dark);
    }
    EXPECT_GT(lit, 10);
    EXPECT_GT(dark, 10);

    right_click(kSwitchX, kSwitchY);
    choose(gui.use_learn_menu().use_learn_item());
    tick();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::unbound);
    EXPECT_FALSE(marker_on(bof()));
    EXPECT_EQ(gui.use_effect_part().use_switch().get_learn_state(), MidiLearn::waiting);
}

// A map the manager holds when the editor opens (the settings file's, at
// start-up) shows from the first frame, as a black square in the top-right
// corner of each bound control, and in the menu; the marker goes with the
// binding.
TEST_F(MidiLearnEditor, ABindingShowsFromTheFirstFrameAndItsMarkerGoesWithIt)
{
    mgr.bind(kBof, 74, 0);
    mgr.bind(kNuke, lumo::MidiMgr::nrpn_selector, 2);
    open();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::bound);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_learn_state(), MidiLearn::bound);
    EXPECT_EQ(zq_test::dark_pixels(screen(), kBofX + 32, kBofY - 40), 64);
    EXPECT_LT(zq_test::dark_pixels(screen(), kBofX - 40, kBofY - 40), 32);
    mgr.unbind(kBof);
    tick();
    EXPECT_LT(zq_test::dark_pixels(screen(), kBofX + 32, kBofY - 40), 32);
}

// The effect binds every parameter to the NRPN of its index: the menu says
// so, but no control carries a marker (a learn then binds as any other).
TEST_F(MidiLearnEditor, TheDefaultNrpnMapShowsInTheMenuButMarksNothing)
{
    mgr.bind_all_to_nrpn();
    open();
    EXPECT_EQ(bof().get_learn_state(), MidiLearn::bound_by_default);
    EXPECT_FALSE(marker_on(bof()));
    EXPECT_FALSE(marker_on(gui.use_effect_part().use_switch()));
    right_click(kBofX, kBofY);
    EXPECT_EQ(gui.use_learn_menu().use_binding_item().get_label(), "NRPN 1");
}

TEST_F(MidiLearnEditor, WithoutAMidiManagerNoMenuPopsUp)
{
    host->midi_mgr = nullptr;
    open();
    EXPECT_EQ(right_click(kBofX, kBofY), nullptr);
    tick();
    EXPECT_EQ(bof().get_learn_state(), -1);
}

TEST(MidiLearnMenu, DescribesEveryKindOfController)
{
    using zarquette::MidiLearnMenu;
    EXPECT_EQ(MidiLearnMenu::describe(0), "CC 0");
    EXPECT_EQ(MidiLearnMenu::describe(lumo::MidiMgr::make_id(101, 5)), "RPN 5");
    EXPECT_EQ(MidiLearnMenu::describe(lumo::MidiMgr::make_id(99, 16383)), "NRPN 16383");
}
