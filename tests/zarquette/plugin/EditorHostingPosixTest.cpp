// The editor through the whole plug-in as a Linux host drives it: the host's
// X11 window, real input through the X server, the host's idle calls at
// whatever rate it likes (or none), the zoom, and what a missing display or
// a dying server must not break. What the editor does with the input is the
// toolkit's and the editor's tests' business; here the platform path is. The
// zoom and many open/close rounds go through the real library in the host
// tool's end-to-end tests.
#include <gtest/gtest.h>

#include "PluginFixture.h"

#include "gadu/x11/ConnectionX11.h"
#include "lumo/midi/MidiMgr.h"
#include "lumo/vst2/Vst2WinPlugin.h"
#include "tests/basic/ScratchDir.h"
#include "tests/gadu/x11/X11Rig.h"
#include "zarquette/gui/ZarquetteGui.h"

#include <X11/keysym.h>

#include <chrono>
#include <cstdlib>
#include <thread>

namespace
{

using gadu_test::HostX11;
using lumo::vst2::PluginOp;

constexpr int kBof = 1;
constexpr int kNuclearPower = 3;

std::uint32_t pixel_sum(const std::vector<std::uint32_t>& pixels)
{
    std::uint32_t sum = 0;
    for (std::uint32_t p : pixels)
    {
        sum = sum * 31u + p;
    }
    return sum;
}

// Every test on a virtual server of its own (named in DISPLAY, as a session
// names the user's) and a scratch key store, with the host's window open.
class EditorHosting : public PluginFixture
{
protected:
    EditorHosting()
    {
        ::setenv("DISPLAY", server.get_name().c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", store.get_path().c_str(), 1);
    }

    void SetUp() override
    {
        ASSERT_FALSE(server.get_name().empty()) << "Xvfb did not start";
        HostX11::errors = 0;
        errors_before = gadu::ConnectionX11::get_unexpected_error_count();
        parent = x11.make_window(1100, 800);
        PluginFixture::SetUp();
    }

    void TearDown() override
    {
        PluginFixture::TearDown();
        EXPECT_EQ(HostX11::errors, 0);
        EXPECT_EQ(gadu::ConnectionX11::get_unexpected_error_count(), errors_before);
    }

    void* parent_handle() const { return reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent)); }

    // Opens the editor and idles until its first frame shows.
    void open_editor()
    {
        ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, parent_handle()), 1);
        const std::uint32_t empty = pixel_sum(x11.capture(parent, 64, 64));
        ASSERT_TRUE(idle_until([&] { return pixel_sum(x11.capture(parent, 64, 64)) != empty; }));
    }

    // The host's idle calls, rate times a second, for about ms milliseconds.
    void idle_at(int rate, int ms)
    {
        const auto period = std::chrono::microseconds(1000000 / rate);
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(ms);
        while (std::chrono::steady_clock::now() < end)
        {
            dispatch(PluginOp::edit_idle);
            std::this_thread::sleep_for(period);
        }
    }

    bool idle_until(const std::function<bool()>& done)
    {
        return gadu_test::idle_until([&] { dispatch(PluginOp::edit_idle); }, done);
    }

    std::vector<std::uint32_t> screen(int width = 512, int height = 384) const
    {
        return x11.capture(parent, width, height);
    }

    gadu_test::VirtualDisplay server;
    zq_test::ScratchDir store;
    HostX11 x11{server.get_name()};
    Window parent = 0;
    std::uint32_t errors_before = 0;
};

TEST_F(EditorHosting, TheHostsWindowShowsTheEditorAndIsLeftAsItWasAfterTheClose)
{
    lumo::vst2::ERect* rect = nullptr;
    ASSERT_EQ(dispatch(PluginOp::edit_get_rect, 0, 0, &rect), 1);
    EXPECT_EQ(rect->bottom, 384);
    EXPECT_EQ(rect->right, 512);
    const std::vector<std::uint32_t> before = screen();
    open_editor();
    const std::vector<std::uint32_t> shown = screen();
    // Black and white artwork (and the greys of its turned knobs), nothing
    // of the host's colour left.
    EXPECT_EQ(std::count_if(shown.begin(), shown.end(),
                            [](std::uint32_t p) { return (p & 0xFF) != (p >> 16) || (p & 0xFF) != ((p >> 8) & 0xFF); }),
              0);
    EXPECT_GT(std::count(shown.begin(), shown.end(), 0xFFFFFFu), 512 * 384 / 4);
    EXPECT_GT(std::count(shown.begin(), shown.end(), 0x000000u), 1000);
    dispatch(PluginOp::edit_close);
    XClearArea(x11.display, parent, 0, 0, 0, 0, False);
    EXPECT_EQ(screen(), before);
    EXPECT_TRUE(x11.children_of(parent).empty());
}

// The switch's animation and the knob's smoothing run on the toolkit's
// timers, which only the host's idle calls drive.
class EditorIdleRate : public EditorHosting, public ::testing::WithParamInterface<int>
{
};

TEST_P(EditorIdleRate, ClicksAutomationAndAnimationsFinishAtTheHostsIdleRate)
{
    open_editor();
    const std::vector<std::uint32_t> off = screen();
    x11.move(350, 85);
    x11.button(Button1, true);
    x11.button(Button1, false);
    idle_at(GetParam(), 600);
    EXPECT_EQ(effect->get_parameter(effect, kNuclearPower), 1.0f);
    const std::vector<std::uint32_t> on = screen();
    EXPECT_NE(on, off);
    effect->set_parameter(effect, kBof, 0.7f);
    idle_at(GetParam(), 300);
    const std::vector<std::uint32_t> turned = screen();
    // Only knob 1's box changed.
    for (int y = 0; y < 384; ++y)
    {
        for (int x = 0; x < 512; ++x)
        {
            if (x < 250 || x >= 340 || y < 180 || y >= 275)
            {
                ASSERT_EQ(turned[static_cast<std::size_t>(y * 512 + x)], on[static_cast<std::size_t>(y * 512 + x)])
                    << x << "," << y;
            }
        }
    }
    EXPECT_NE(turned, on);
    dispatch(PluginOp::edit_close);
}

INSTANTIATE_TEST_SUITE_P(Rates, EditorIdleRate, ::testing::Values(10, 1000));

TEST_F(EditorHosting, AHostThatNeverIdlesOpensAndClosesCleanly)
{
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, parent_handle()), 1);
        dispatch(PluginOp::edit_close);
    }
    EXPECT_TRUE(x11.children_of(parent).empty());
}

TEST_F(EditorHosting, ARightClickOpensTheLearnMenuAndLearnBindsTheNextController)
{
    resume(44100.0f, 64);
    open_editor();
    x11.move(294, 226);
    x11.button(Button3, true);
    x11.button(Button3, false);
    const lumo::MidiMgr& mgr = *dynamic_cast<lumo::Vst2WinPlugin&>(*lumo::AudioEffect::from_aeffect(effect))
                                    .use_midi_mgr();
    // "Learn MIDI controller" is the first entry.
    idle_at(100, 100);
    x11.tap(XK_Down);
    x11.tap(XK_Return);
    ASSERT_TRUE(idle_until([&] { return mgr.get_pending_learn() == kBof; }));
    lumo::vst2::MidiEvent cc{};
    cc.type = lumo::vst2::event_types::midi;
    cc.byte_size = sizeof(cc);
    cc.midi_data[0] = static_cast<char>(0xB0);
    cc.midi_data[1] = 74;
    cc.midi_data[2] = 64;
    std::intptr_t block[3] = {1, 0, reinterpret_cast<std::intptr_t>(&cc)};
    dispatch(PluginOp::process_events, 0, 0, block);
    std::vector<float> l(64), r(64), ol(64), orr(64);
    process(l, r, ol, orr);
    EXPECT_EQ(mgr.get_id(kBof), 74 * 65536);
    dispatch(PluginOp::edit_close);
}

// Many rounds of two instances are the host tool's editor-stress test.
TEST_F(EditorHosting, TwoInstancesAtOnceAndAHostThatForgetsToClose)
{
    FakeHost other_host;
    lumo::vst2::AEffect* other = other_host.open_plugin();
    ASSERT_NE(other, nullptr);
    ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, parent_handle()), 1);
    ASSERT_EQ(FakeHost::dispatch(other, PluginOp::edit_open, 0, 0, parent_handle()), 1);
    FakeHost::dispatch(other, PluginOp::edit_idle);
    // A host that forgets to close the editor before it deletes the plug-in.
    FakeHost::close_plugin(other);
    dispatch(PluginOp::edit_idle);
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, NoDisplayOrNoWindowRefusesTheOpenAndThePluginWorksOn)
{
    const auto missing = reinterpret_cast<void*>(std::uintptr_t{0x3FFFFF});
    EXPECT_EQ(dispatch(PluginOp::edit_open, 0, 0, missing), 0);
    dispatch(PluginOp::edit_close);
    ::setenv("DISPLAY", ":9999", 1);
    EXPECT_EQ(dispatch(PluginOp::edit_open, 0, 0, parent_handle()), 0);
    dispatch(PluginOp::edit_idle);
    dispatch(PluginOp::edit_close);
    ::setenv("DISPLAY", server.get_name().c_str(), 1);
    effect->set_parameter(effect, kBof, 0.25f);
    EXPECT_EQ(effect->get_parameter(effect, kBof), 0.25f);
    open_editor();
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, AServerThatGoesAwayWhileTheEditorIsOpenBreaksNothing)
{
    gadu_test::VirtualDisplay doomed;
    Window doomed_parent = 0;
    {
        HostX11 host(doomed.get_name());
        doomed_parent = host.make_window(600, 400);
        XSetCloseDownMode(host.display, RetainPermanent);
    }
    ::setenv("DISPLAY", doomed.get_name().c_str(), 1);
    ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, reinterpret_cast<void*>(static_cast<std::uintptr_t>(doomed_parent))),
              1);
    dispatch(PluginOp::edit_idle);
    doomed.end();
    effect->set_parameter(effect, kBof, 0.6f);
    for (int i = 0; i < 5; ++i)
    {
        dispatch(PluginOp::edit_idle);
    }
    dispatch(PluginOp::edit_close);
    ::setenv("DISPLAY", server.get_name().c_str(), 1);
    open_editor();
    dispatch(PluginOp::edit_close);
}

TEST_F(EditorHosting, AHostTempoReachesTheEditorAtItsNextIdle)
{
    resume();
    host.time_info.tempo = 150.0;
    std::vector<float> l(64), r(64), ol(64), orr(64);
    process(l, r, ol, orr);
    const float tempo_norm = effect->get_parameter(effect, 0);
    auto& adapter = dynamic_cast<lumo::Vst2WinPlugin&>(*lumo::AudioEffect::from_aeffect(effect));
    auto& gui = dynamic_cast<zarquette::ZarquetteGui&>(*adapter.use_gui());
    gadu::ControlInterface& hidden = *gui.use_meta_control(0)->use_control();
    dispatch(PluginOp::edit_idle);
    EXPECT_DOUBLE_EQ(hidden.get_value(), tempo_norm);
}

}  // namespace
