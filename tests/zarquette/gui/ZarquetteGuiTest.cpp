// The effect's editor on the real audio side and artwork, in an off-screen
// window with a pinned clock: how it binds and sets up its controls, one
// gesture as the host service sees it, and the parameter side's changes as
// the screen shows them. The controls' own mechanics are the toolkit's tests.
#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/OffscreenWindow.h"
#include "tests/zarquette/gui/EditorRig.h"

#include <gtest/gtest.h>

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

    std::vector<std::uint8_t> pixels() const
    {
        const gadu::MemoryRenderingBuffer* screen = window.use_screen();
        return std::vector<std::uint8_t>(screen->pixels(), screen->pixels() + kScreenBytes);
    }

    // The pixels that differ, inside knob 1's square and outside it.
    static std::pair<int, int> changes_around_bof(const std::vector<std::uint8_t>& a,
                                                  const std::vector<std::uint8_t>& b)
    {
        const gadu::Rect inside{294 - 40, 226 - 40, 294 + 40, 226 + 40};
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
};

}  // namespace

TEST_F(Editor, BindsEveryParameterToItsControlSetUpAsTheLayoutSays)
{
    EXPECT_EQ(window.get_content_width(), 512);
    EXPECT_EQ(window.get_window_height(), 384);
    const int knob_params[] = {1, 2, 4, 5};
    const std::int32_t hit_radii[] = {40, 24, 24, 32};
    for (int k = 0; k < 4; ++k)
    {
        const gadu::Knob& knob = gui.use_effect_part().use_knob(k);
        const std::int32_t r = hit_radii[k];
        EXPECT_EQ(knob.get_hit_rect(), (gadu::Rect{-r, -r, r, r}));
        const lumo::MetaControl* meta = gui.use_meta_control(knob_params[k]);
        ASSERT_NE(meta, nullptr);
        EXPECT_EQ(meta->use_control(), &knob);
        EXPECT_EQ(meta->use_param(), &dsp.use_param(knob_params[k]));
        // 128 pixels up are half the range; sideways 32 times finer.
        EXPECT_EQ(knob.get_pixels_per_range(), 256);
        EXPECT_EQ(knob.get_fine_factor(), 1.0f / 32.0f);
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

// The knob's listener hands the host service one gesture at the drag's level,
// and the changes it reports come back without being written again.
TEST_F(Editor, ADragOnKnobOneIsOneGestureOnBof)
{
    open();
    window.press(294, 226, left);
    for (int i = 0; i < 128; ++i)
    {
        wait(0.004);
        const gadu::CaptureState::Point at = window.get_cursor();
        window.move(at.x, at.y - 1);
    }
    const gadu::CaptureState::Point at = window.get_cursor();
    window.release(at.x, at.y, left);
    wait(3.0);
    EXPECT_NEAR(dsp.use_param(kBof).get_norm(), 0.5f, 0.01f);
    ASSERT_FALSE(host->of("take").empty());
    EXPECT_EQ(host->of("take")[0].index, kBof);
    EXPECT_EQ(host->of("take")[0].level, 200);
    ASSERT_EQ(host->of("release").size(), 1u);
    for (const lumo_test::HostCall& set : host->of("set"))
    {
        EXPECT_EQ(set.index, kBof);
    }
    EXPECT_EQ(gui.use_effect_part().use_knob(0).get_value(), static_cast<double>(dsp.use_param(kBof).get_norm()));
}

// Host automation reaches the screen at the next timer tick and redraws knob
// 1 alone; while the editor is closed it shows at the next open exactly so.
TEST_F(Editor, AutomationRedrawsOnlyTheBoundKnobWhetherOpenOrNot)
{
    open();
    const auto at_zero = pixels();
    automate(kBof, 0.8f);
    EXPECT_TRUE(window.paint().is_empty());
    wait(0.03);
    const auto open_changes = changes_around_bof(at_zero, pixels());
    EXPECT_GT(open_changes.first, 100);
    EXPECT_EQ(open_changes.second, 0);
    EXPECT_TRUE(host->of("set").empty());

    automate(kBof, 0.0f);
    wait(0.03);
    gui.close();
    automate(kBof, 0.6f);
    open();
    EXPECT_DOUBLE_EQ(gui.use_effect_part().use_knob(0).get_value(), 0.6f);
    const auto closed_changes = changes_around_bof(at_zero, pixels());
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
    EXPECT_THROW(gui.set_default_state(), std::runtime_error);
    EXPECT_EQ(gui.open(nullptr), -1);
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
