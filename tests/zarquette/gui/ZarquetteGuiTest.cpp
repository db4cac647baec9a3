// The effect's editor on the real audio side and artwork, in an off-screen
// window with a pinned clock: the screen it builds, the user's gestures as the
// host service sees them, and the parameter side's changes as the screen shows
// them.
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/OffscreenWindow.h"
#include "sys/ClockPin.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>

namespace
{

using gadu::mouse_button::left;

constexpr int kBof = 1;
constexpr int kNuke = 3;

class Editor : public ::testing::Test, protected zq_test::EditorRig
{
protected:
    Editor() { window.set_time(kStart); }

    // Lets time pass as a window on screen would: the clock the controls
    // read, the timer service every 2 ms, and a paint of what changed.
    void wait(double seconds)
    {
        for (double left_s = seconds; left_s > 1e-9; left_s -= 0.002)
        {
            pin.set_seconds(window_time += std::min(left_s, 0.002));
            window.run_timers(std::min(left_s, 0.002));
            window.paint();
        }
    }

    void open()
    {
        ASSERT_EQ(gui.open(nullptr), 0);
        window.paint_all();
        host->calls.clear();
    }

    // Presses at (x, y), moves the pointer by (dx, dy) one pixel at a time, 4 ms
    // apart (relative to where it is, since the window warps it back during a
    // drag), lets go, and lets the smoothing tail run out.
    void drag(int x, int y, int dx, int dy)
    {
        window.press(x, y, left);
        const int steps = std::max(std::abs(dx), std::abs(dy));
        int done_x = 0;
        int done_y = 0;
        for (int i = 1; i <= steps; ++i)
        {
            wait(0.004);
            const gadu::CaptureState::Point at = window.get_cursor();
            window.move(at.x + dx * i / steps - done_x, at.y + dy * i / steps - done_y);
            done_x = dx * i / steps;
            done_y = dy * i / steps;
        }
        const gadu::CaptureState::Point at = window.get_cursor();
        window.release(at.x, at.y, left);
        wait(3.0);
        window.paint();
    }

    // As the adapter does with an accepted change from the host, from any
    // thread; the editor's thread takes it at its next timer tick.
    void automate(int index, float value)
    {
        dsp.use_param(index).set_norm_value(value);
        gui.param_changed(index, value, 100);
    }

    std::vector<std::uint8_t> pixels() const
    {
        const gadu::MemoryRenderingBuffer* screen = window.use_screen();
        return std::vector<std::uint8_t>(screen->pixels(), screen->pixels() + kScreenBytes);
    }

    // The pixels that differ, inside the rectangle and outside it.
    static std::pair<int, int> count_changes(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b,
                                             const gadu::Rect& inside)
    {
        std::pair<int, int> changes{0, 0};
        for (int i = 0; i < kScreenBytes / 4; ++i)
        {
            if (std::memcmp(&a[static_cast<std::size_t>(i) * 4], &b[static_cast<std::size_t>(i) * 4], 3) != 0)
            {
                const int x = i % zarquette::ZarquetteGui::width;
                const int y = i / zarquette::ZarquetteGui::width;
                ++(inside.contains(x, y) ? changes.first : changes.second);
            }
        }
        return changes;
    }

    static constexpr int kScreenBytes = zarquette::ZarquetteGui::width * zarquette::ZarquetteGui::height * 4;

    static constexpr double kStart = 100.0;
    sys::ClockPin pin{kStart};
    double window_time = kStart;
};

}  // namespace

TEST_F(Editor, BuildsTheScreenAndBindsEveryParameter)
{
    EXPECT_EQ(window.get_content_width(), 512);
    EXPECT_EQ(window.get_window_height(), 384);
    EXPECT_EQ(gui.get_picture_index("arw_06"), 0);
    EXPECT_EQ(gui.get_picture_index("kn_04_spn"), 7);
    EXPECT_EQ(gui.get_picture_index("font_03"), -1);
    EXPECT_EQ(gui.get_nbr_fonts(), 1);

    const int knob_params[] = {1, 2, 4, 5};
    for (int k = 0; k < 4; ++k)
    {
        const lumo::MetaControl* meta = gui.use_meta_control(knob_params[k]);
        ASSERT_NE(meta, nullptr);
        EXPECT_EQ(meta->use_control(), &gui.use_effect_part().use_knob(k));
        EXPECT_EQ(meta->use_param(), &dsp.use_param(knob_params[k]));
        EXPECT_EQ(gui.use_effect_part().use_knob(k).get_pixels_per_range(), 256);
    }
    EXPECT_EQ(gui.use_meta_control(kNuke)->use_control(), &gui.use_effect_part().use_switch());
    EXPECT_EQ(gui.use_effect_part().use_knob(0).get_x(), 294);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_y(), 74);
    // Tempo has a control that never shows.
    ASSERT_NE(gui.use_meta_control(0), nullptr);
    EXPECT_FALSE(gui.use_meta_control(0)->use_control()->is_placed());
    EXPECT_EQ(gui.use_meta_control(6), nullptr);
    EXPECT_EQ(gui.use_meta_control(-1), nullptr);

    // A second build does nothing.
    gadu::ControlInterface* before = gui.use_meta_control(0)->use_control();
    gui.set_default_state();
    EXPECT_EQ(gui.use_meta_control(0)->use_control(), before);
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

TEST_F(Editor, DraggingKnobOneUpBy128PixelsMovesBofByHalfTheRange)
{
    open();
    drag(294, 226, 0, -128);
    EXPECT_NEAR(dsp.use_param(kBof).get_norm(), 0.5f, 0.01f);
    ASSERT_FALSE(host->of("take").empty());
    EXPECT_EQ(host->of("take")[0].index, kBof);
    EXPECT_EQ(host->of("take")[0].level, 200);
    ASSERT_EQ(host->of("release").size(), 1u);
    EXPECT_EQ(host->of("release")[0].level, 200);
    // Each change of the editor's own came back once and was not written again.
    for (const lumo_test::HostCall& set : host->of("set"))
    {
        EXPECT_EQ(set.index, kBof);
    }
    EXPECT_EQ(gui.use_effect_part().use_knob(0).get_value(), static_cast<double>(dsp.use_param(kBof).get_norm()));
}

TEST_F(Editor, SidewaysDragIsFineAndADoubleClickRestoresTheDefault)
{
    open();
    drag(294, 226, 0, -64);
    const float coarse = dsp.use_param(kBof).get_norm();
    EXPECT_NEAR(coarse, 0.25f, 0.02f);
    drag(294, 226, 256, -8);
    // 256 pixels sideways are 1/32 of the range at most.
    EXPECT_NEAR(dsp.use_param(kBof).get_norm(), coarse, 1.0f / 32.0f + 0.01f);
    window.press(294, 226, left);
    window.release(294, 226, left);
    window.double_click(294, 226, left);
    window.release(294, 226, left);
    wait(3.0);
    EXPECT_EQ(dsp.use_param(kBof).get_norm(), dsp.use_param(kBof).default_norm);
}

TEST_F(Editor, TheSwitchTogglesNuclearPowerAndAClickOutsideChangesNothing)
{
    open();
    window.press(1, 1, left);
    window.release(1, 1, left);
    window.press(200, 40, left);
    window.release(200, 40, left);
    wait(1.0);
    EXPECT_TRUE(host->of("set").empty());

    window.press(350, 85, left);
    window.release(350, 85, left);
    EXPECT_EQ(dsp.use_param(kNuke).get_norm(), 1.0f);
    // Half-way through its 0.1 s the switch shows its other picture.
    wait(0.04);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), 0);
    wait(0.1);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), 1);
}

TEST_F(Editor, HostAutomationWhileOpenRedrawsOnlyTheBoundKnob)
{
    open();
    const auto before = pixels();
    automate(kBof, 0.8f);
    EXPECT_TRUE(window.paint().is_empty());
    wait(0.03);
    const auto changes = count_changes(before, pixels(), gadu::Rect{294 - 40, 226 - 40, 294 + 40, 226 + 40});
    EXPECT_GT(changes.first, 100);
    EXPECT_EQ(changes.second, 0);
    EXPECT_TRUE(host->of("set").empty());
}

TEST_F(Editor, AutomationWhileClosedShowsAtTheNextOpen)
{
    open();
    const auto at_zero = pixels();
    gui.close();
    automate(kBof, 0.6f);
    open();
    EXPECT_DOUBLE_EQ(gui.use_effect_part().use_knob(0).get_value(), 0.6f);
    const auto changes = count_changes(at_zero, pixels(), gadu::Rect{254, 186, 334, 266});
    EXPECT_GT(changes.first, 100);
    EXPECT_EQ(changes.second, 0);
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
    automate(kNuke, 0.49f);
    wait(0.2);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), 0);
    automate(kNuke, 0.5f);
    wait(0.2);
    EXPECT_EQ(gui.use_effect_part().use_switch().get_shown_state(), 1);
}

TEST_F(Editor, IllegalParameterSideCallsChangeNothing)
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
    EXPECT_DOUBLE_EQ(gui.use_effect_part().use_knob(0).get_value(), 0.3f);
}

TEST_F(Editor, MidiLearnStatesAreKeptByTheBoundControlAndRedrawIt)
{
    open();
    EXPECT_EQ(gui.use_effect_part().use_knob(1).get_learn_state(), -1);
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
    try
    {
        gui.set_default_state();
        FAIL() << "built without an audio side";
    }
    catch (const std::runtime_error& e)
    {
        EXPECT_STREQ(e.what(), "ZarquetteGui::set_default_state() : Cannot build GUI.");
    }
    EXPECT_EQ(gui.open(nullptr), -1);
    gui.close();
}

TEST(GraphRscMixin, LoadingStopsAtTheFirstMissingPicture)
{
    lumo::GraphRscMixin artwork;
    const lumo::GraphRscMixin::PictureEntry table[] = {{"arw_06", 9, 9}, {"no_such", 0, 0}, {"bkg", 0, 0}};
    EXPECT_FALSE(artwork.load_pictures(table, 3));
    EXPECT_EQ(artwork.get_nbr_pictures(), 1);
    EXPECT_EQ(artwork.use_picture("bkg"), nullptr);
    std::int32_t x = 0;
    std::int32_t y = 0;
    artwork.use_picture("arw_06")->get_hot_spot(x, y);
    EXPECT_EQ(x, 9);
    const char* fonts[] = {"bkg"};
    EXPECT_FALSE(artwork.load_fonts(fonts, 1));
}
