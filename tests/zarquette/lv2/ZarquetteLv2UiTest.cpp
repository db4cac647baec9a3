// The editor's library as an LV2 host runs it, beside the plug-in: embedded
// in the host's window on a virtual X server of the test's own, moved by real
// input through the server's test extension, its port writes, touches and
// learn messages carried to a plug-in instance and the plug-in's reports
// carried back. What the editor does with input is the editor's own tests'
// business; here the LV2 path is.
#include "Lv2UiRig.h"

#include "lumo/midi/MidiMgr.h"
#include "tools/vsthost/WindowProbe.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include <X11/keysym.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>

namespace
{

using gadu_test::HostX11;
using zq_test::Lv2UiRig;
using Screen = std::vector<std::uint32_t>;

// Knob 1 ("Bof"): its centre, and the box it draws in.
constexpr int kBof = 1;
constexpr int kBofX = 294;
constexpr int kBofY = 226;

bool in_bof_box(int x, int y)
{
    return x >= 250 && x < 340 && y >= 180 && y < 275;
}

// The learn marker of a bound control: a black square of 8 x 8 pixels in the
// top-right corner of the knob's hit box, which reaches 40 pixels out.
bool shows_marker(const Screen& screen)
{
    for (int y = kBofY - 40; y < kBofY - 32; ++y)
    {
        for (int x = kBofX + 32; x < kBofX + 40; ++x)
        {
            if (screen[static_cast<std::size_t>(y * 512 + x)] != 0)
            {
                return false;
            }
        }
    }
    return true;
}

class ZarquetteLv2Ui : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE(server.get_name().empty()) << "Xvfb did not start";
        ::setenv("DISPLAY", server.get_name().c_str(), 1);
        HostX11::errors = 0;
        parent = x11.make_window(1100, 800);
    }

    // The editor says what goes wrong in the host's log, X protocol errors
    // in its window included.
    void TearDown() override
    {
        ui.reset();
        EXPECT_EQ(plugin.log, "");
        EXPECT_EQ(HostX11::errors, 0);
    }

    // Opens the editor, lets the plug-in answer its first request (the
    // bindings), and idles until its first frame shows.
    void open_editor(bool minimal = false)
    {
        const Screen empty = screen(64, 64);
        ui = std::make_unique<Lv2UiRig>(plugin, map, parent, minimal);
        ui->idle();
        ui->exchange();
        ASSERT_TRUE(gadu_test::idle_until([&] { ui->idle(); }, [&] { return screen(64, 64) != empty; }));
        ui->log.clear();
    }

    void idle_for(int ms)
    {
        for (int i = 0; i < ms / 2; ++i)
        {
            ui->idle();
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    Screen screen(int width = 512, int height = 384) const { return x11.capture(parent, width, height); }

    // Every pixel outside knob 1's box is as it was.
    static void expect_only_bof_changed(const Screen& before, const Screen& after)
    {
        for (int y = 0; y < 384; ++y)
        {
            for (int x = 0; x < 512; ++x)
            {
                const std::size_t at = static_cast<std::size_t>(y * 512 + x);
                ASSERT_TRUE(in_bof_box(x, y) || after[at] == before[at]) << x << "," << y;
            }
        }
    }

    gadu_test::VirtualDisplay server;
    HostX11 x11{server.get_name()};
    Window parent = 0;
    zq_test::UridMap map;
    zq_test::Lv2Rig plugin{map};
    std::unique_ptr<Lv2UiRig> ui;
};

// The editor's windows, pixmaps and cursors go with its own connection to the
// display: a connection or a shared image left behind is the leak.
TEST_F(ZarquetteLv2Ui, ShowsTheArtworkInTheHostsWindowAndLeavesNothingBehind)
{
    const Screen before = screen();
    open_editor();
    EXPECT_EQ(x11.children_of(parent), std::vector<Window>{ui->widget});
    EXPECT_EQ(ui->width, 512);
    EXPECT_EQ(ui->height, 384);
    // Black and white artwork (and the greys of its turned knobs), nothing
    // of the host's colour left.
    const Screen shown = screen();
    EXPECT_EQ(std::count_if(shown.begin(), shown.end(),
                            [](std::uint32_t p) { return (p & 0xFF) != (p >> 16) || (p & 0xFF) != ((p >> 8) & 0xFF); }),
              0);
    EXPECT_GT(std::count(shown.begin(), shown.end(), 0xFFFFFFu), 512 * 384 / 4);
    EXPECT_GT(std::count(shown.begin(), shown.end(), 0x000000u), 1000);
    ui.reset();
    XClearArea(x11.display, parent, 0, 0, 0, 0, False);
    EXPECT_EQ(screen(), before);
    EXPECT_TRUE(x11.children_of(parent).empty());

    const vsthost::WindowProbe::Counts first = vsthost::WindowProbe::get_counts();
    for (int round = 0; round < 20; ++round)
    {
        ui = std::make_unique<Lv2UiRig>(plugin, map, parent);
        ui->idle();
        ui->exchange();
        ui.reset();
    }
    const vsthost::WindowProbe::Counts last = vsthost::WindowProbe::get_counts();
    EXPECT_EQ(last.gdi, first.gdi) << first.gdi_name;
    EXPECT_EQ(last.user, first.user) << first.user_name;
    EXPECT_TRUE(x11.children_of(parent).empty());
}

TEST_F(ZarquetteLv2Ui, TheUsersZoomSizesTheEditor)
{
    const std::filesystem::path value =
        std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "Velnor" / "Zarquette" / "Editor Zoom.value";
    std::filesystem::create_directories(value.parent_path());
    std::ofstream(value) << "2";
    open_editor();
    std::filesystem::remove(value);
    EXPECT_EQ(ui->width, 1024);
    EXPECT_EQ(ui->height, 768);
    XWindowAttributes attributes{};
    XGetWindowAttributes(x11.display, ui->widget, &attributes);
    EXPECT_EQ(attributes.width, 1024);
    EXPECT_EQ(attributes.height, 768);
}

// 128 pixels upwards are half of the knob's range. Every write of the port
// lies inside a touch of it (a quick drag's smoothing tail after the release
// may come as a touch of its own).
TEST_F(ZarquetteLv2Ui, ADragOfBofWritesHalfItsRangeInsideTouches)
{
    open_editor();
    const std::string touch = "touch " + std::to_string(ui->control_port(kBof));
    const std::string write = "write " + std::to_string(ui->control_port(kBof)) + " ";
    x11.move(kBofX, kBofY);
    x11.button(Button1, true);
    for (int step = 0; step < 32; ++step)
    {
        x11.move_by(0, -4);
        idle_for(10);
    }
    x11.button(Button1, false);
    // Until the knob has settled and its last touch has ended.
    for (std::size_t seen = 0; seen != ui->log.size();)
    {
        seen = ui->log.size();
        idle_for(700);
    }
    ASSERT_FALSE(ui->log.empty());
    EXPECT_EQ(ui->log.back(), touch + " off");
    bool touched = false;
    float last = -1.0f;
    for (const std::string& entry : ui->log)
    {
        if (entry.rfind(touch, 0) == 0)
        {
            ASSERT_NE(entry == touch + " on", touched) << "a touch begins twice or ends untouched";
            touched = !touched;
            continue;
        }
        ASSERT_EQ(entry.rfind(write, 0), 0u) << entry;
        ASSERT_TRUE(touched) << entry << " outside a touch";
        last = std::stof(entry.substr(write.size()));
    }
    EXPECT_NEAR(last, 50.0f, 0.5f);
    ui->exchange();
    EXPECT_NEAR(plugin.param(kBof), 0.5f, 0.005f);

    // A host that closes the editor while the knob is held gets the touch back.
    x11.move(kBofX, kBofY);
    x11.button(Button1, true);
    for (int step = 0; step < 8; ++step)
    {
        x11.move_by(0, -4);
        idle_for(30);
    }
    ASSERT_EQ(ui->log.back().rfind(write, 0), 0u) << "the knob is not held";
    ui->close();
    x11.button(Button1, false);
    EXPECT_EQ(ui->log.back(), touch + " off");
}

// Without the touch feature the knobs and the switch still write their ports;
// without the URID map there is no learn menu (its messages need it).
TEST_F(ZarquetteLv2Ui, AHostThatOffersOnlyTheParentWindowGetsAnEditorThatWorks)
{
    open_editor(true);
    x11.move(350, 85);
    x11.button(Button1, true);
    x11.button(Button1, false);
    ASSERT_TRUE(gadu_test::idle_until([&] { ui->idle(); }, [&] { return !ui->log.empty(); }));
    EXPECT_EQ(ui->log, std::vector<std::string>{"write " + std::to_string(ui->control_port(3)) + " 1"});
}

TEST_F(ZarquetteLv2Ui, AHostsPortEventTurnsTheKnobAndComesNotBack)
{
    open_editor();
    idle_for(100);
    const Screen still = screen();
    // What is no value of one of the plug-in's ports changes nothing.
    const std::uint32_t notify = plugin.plugin().use_layout().get_atom_out();
    const std::uint32_t transfer = map.id(LV2_ATOM__eventTransfer);
    const LV2_Atom too_long{1024, map.id(LV2_ATOM__Object)};
    const float value = 70.0f;
    ui->port_event(notify, 4, transfer, &too_long);
    ui->port_event(notify, sizeof(too_long), transfer, &too_long);
    ui->port_event(ui->control_port(kBof), sizeof(value), transfer, &value);
    ui->port_event(99, sizeof(value), 0, &value);
    idle_for(100);
    EXPECT_EQ(screen(), still);
    ui->port_event(ui->control_port(kBof), value);
    ASSERT_TRUE(gadu_test::idle_until([&] { ui->idle(); }, [&] { return screen() != still; }));
    idle_for(300);
    expect_only_bof_changed(still, screen());
    EXPECT_TRUE(ui->log.empty());
}

// The learn menu arms the plug-in's MIDI manager through a message; the
// controller it learns comes back in the plug-in's report and the knob shows
// the marker of a bound control.
TEST_F(ZarquetteLv2Ui, TheLearnMenuArmsThePluginAndTheBindingItReportsShowsTheMarker)
{
    open_editor();
    idle_for(100);
    const Screen unbound = screen();
    x11.move(kBofX, kBofY);
    x11.button(Button3, true);
    x11.button(Button3, false);
    idle_for(100);
    // "Learn MIDI controller" is the first entry.
    x11.tap(XK_Down);
    x11.tap(XK_Return);
    ASSERT_TRUE(gadu_test::idle_until([&] { ui->idle(); }, [&] { return !ui->log.empty(); }));
    EXPECT_EQ(ui->log.back(), "atom " + std::to_string(plugin.plugin().use_layout().get_atom_in()) + " "
                                  + std::to_string(map.id(std::string(zarquette::lv2_uri) + "#LearnStart")));
    ui->exchange();
    const lumo::MidiMgr& mgr = *plugin.plugin().use_midi_mgr();
    EXPECT_EQ(mgr.get_pending_learn(), kBof);
    ui->exchange({0xB0, 74, 64});
    EXPECT_EQ(mgr.get_id(kBof), 74 * 65536);
    EXPECT_FALSE(shows_marker(unbound));
    // Steadily: a control that still waits blinks its marker, dark for 0.2 s
    // of every 0.6 s.
    for (int look = 0; look < 5; ++look)
    {
        idle_for(150);
        EXPECT_TRUE(shows_marker(screen())) << look;
    }
    expect_only_bof_changed(unbound, screen());
}

}  // namespace
