// MIDI learn from the editor: the right button's menu on the real editor in
// an off-screen window, a learn that completes on the "audio thread" (here
// the manager's map_controller, called directly), and what the controls show.
#include "zarquette/gui/MidiLearn.h"
#include "zarquette/gui/MidiLearnMenu.h"
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/MenuItem.h"
#include "gadu/OffscreenWindow.h"
#include "lumo/midi/MidiMgr.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using gadu::mouse_button::left;
using gadu::mouse_button::right;
using zarquette::MidiLearn;

using zq_test::kBofX;
using zq_test::kBofY;

constexpr int kBof = 1;
constexpr int kNuke = 3;
constexpr int kSwitchX = 344;
constexpr int kSwitchY = 84;

class MidiLearnEditor : public ::testing::Test, protected zq_test::EditorRig
{
protected:
    MidiLearnEditor()
    {
        mgr.set_dsp(&dsp);
        host->midi_mgr = &mgr;
    }

    void open()
    {
        ASSERT_EQ(gui.open(nullptr), 0);
        window.paint_all();
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
