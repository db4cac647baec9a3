// The editor through the whole plug-in as a host drives it: the rectangle,
// open and close, the user's gestures as the host sees them, the host's
// automation as the screen shows it, and tempo changes reaching the editor.
// Here the editor's window is the off-screen one, so its pixels and input are
// at hand; the Windows window runs the same paths under the host tool.
#include "PluginFixture.h"

#include "gadu/OffscreenWindow.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "sys/ClockPin.h"
#include "zarquette/gui/ZarquetteGui.h"


namespace
{

using lumo::vst2::PluginOp;

constexpr int kBof = 1;

class EditorHosting : public PluginFixture
{
protected:
    lumo::Vst2WinPlugin& adapter() const
    {
        return dynamic_cast<lumo::Vst2WinPlugin&>(*lumo::AudioEffect::from_aeffect(effect));
    }
    zarquette::ZarquetteGui& gui() const { return dynamic_cast<zarquette::ZarquetteGui&>(*adapter().use_gui()); }
    gadu::OffscreenWindow& window() const
    {
        return dynamic_cast<gadu::OffscreenWindow&>(adapter().use_editor_host()->use_window());
    }

    void open_editor()
    {
        ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, &host), 1);
        window().set_time(now);
        window().paint_all();
    }

    // Time passes as for a window on screen: clock, timers, paint.
    void wait(double seconds)
    {
        for (double left = seconds; left > 1e-9; left -= 0.002)
        {
            now += std::min(left, 0.002);
            pin.set_seconds(now);
            window().run_timers(std::min(left, 0.002));
            window().paint();
        }
    }

    std::vector<std::uint8_t> screen() const
    {
        const gadu::MemoryRenderingBuffer* s = window().use_screen();
        return std::vector<std::uint8_t>(s->pixels(), s->pixels() + 512 * 384 * 4);
    }

    double now = 50.0;
    sys::ClockPin pin{50.0};
};

}  // namespace

TEST_F(EditorHosting, TheHostSeesAFixedEditorOf512By384)
{
    namespace f = lumo::vst2::effect_flags;
    EXPECT_NE(effect->flags & f::has_editor, 0);
    lumo::vst2::ERect* rect = nullptr;
    ASSERT_EQ(dispatch(PluginOp::edit_get_rect, 0, 0, &rect), 1);
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(rect->top, 0);
    EXPECT_EQ(rect->left, 0);
    EXPECT_EQ(rect->bottom, 384);
    EXPECT_EQ(rect->right, 512);
    open_editor();
    EXPECT_FALSE(window().is_resizable());
    EXPECT_EQ(window().get_window_width(), 512);
    EXPECT_EQ(dispatch(PluginOp::edit_key_down), -1);
    EXPECT_EQ(dispatch(PluginOp::edit_key_up), -1);
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, DraggingKnobOneIsAutomationInsideOneGesture)
{
    open_editor();
    window().press(294, 226, gadu::mouse_button::left);
    for (int i = 0; i < 128; ++i)
    {
        wait(0.004);
        const gadu::CaptureState::Point at = window().get_cursor();
        window().move(at.x, at.y - 1);
    }
    EXPECT_EQ(host.last_begin_edit.load(), kBof);
    const gadu::CaptureState::Point at = window().get_cursor();
    window().release(at.x, at.y, gadu::mouse_button::left);
    wait(3.0);
    EXPECT_NEAR(effect->get_parameter(effect, kBof), 0.5f, 0.01f);
    EXPECT_EQ(host.last_automated_index.load(), kBof);
    EXPECT_NEAR(host.last_automated_value.load(), 0.5f, 0.01f);
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, AutomationRedrawsTheKnobWhileOpenAndWaitsForTheNextOpenWhileClosed)
{
    open_editor();
    const auto at_zero = screen();
    effect->set_parameter(effect, kBof, 0.7f);
    wait(0.03);
    EXPECT_NE(screen(), at_zero);
    EXPECT_DOUBLE_EQ(gui().use_effect_part().use_knob(0).get_value(), 0.7f);
    dispatch(PluginOp::edit_close);

    effect->set_parameter(effect, kBof, 0.0f);
    open_editor();
    wait(0.03);
    EXPECT_DOUBLE_EQ(gui().use_effect_part().use_knob(0).get_value(), 0.0);
    // Compared as whole-screen paints, as the first picture was made: a turned
    // picture's edge pixels may differ by the tile a partial paint starts at.
    window().paint_all();
    EXPECT_EQ(screen(), at_zero);
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, AHostTempoReachesTheEditorAtItsNextIdle)
{
    resume();
    host.time_info.tempo = 150.0;
    std::vector<float> l(64), r(64), ol(64), orr(64);
    process(l, r, ol, orr);
    const float tempo_norm = effect->get_parameter(effect, 0);
    gadu::ControlInterface& hidden = *gui().use_meta_control(0)->use_control();
    dispatch(PluginOp::edit_idle);
    EXPECT_DOUBLE_EQ(hidden.get_value(), tempo_norm);
}

TEST_F(EditorHosting, OpeningAndClosingRepeatedlyAndTwoInstancesAtOnce)
{
    for (int i = 0; i < 200; ++i)
    {
        ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, &host), 1);
        dispatch(PluginOp::edit_idle);
        dispatch(PluginOp::edit_close);
    }
    FakeHost other_host;
    lumo::vst2::AEffect* other = other_host.open_plugin();
    ASSERT_NE(other, nullptr);
    ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, &host), 1);
    ASSERT_EQ(FakeHost::dispatch(other, PluginOp::edit_open, 0, 0, &other_host), 1);
    effect->set_parameter(effect, kBof, 0.3f);
    EXPECT_EQ(other->get_parameter(other, kBof), 0.0f);
    // A host that forgets to close the editor before it deletes the plug-in.
    FakeHost::close_plugin(other);
    dispatch(PluginOp::edit_close);
}
