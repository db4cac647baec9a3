// The editor's library as an LV2 host runs it, beside the plug-in: embedded
// in the host's window on a virtual X server of the test's own, moved by real
// input through the server's test extension, its port writes, touches and
// learn messages carried to a plug-in instance and the plug-in's reports
// carried back. What the editor does with input is the editor's own tests'
// business; here the LV2 path is.
#include "Lv2UiRig.h"

#include "lumo/midi/MidiMgr.h"
#include "tests/zarquette/gui/X11EditorHost.h"
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
using zq_test::kBofX;
using zq_test::kBofY;
using zq_test::Lv2UiRig;
using zq_test::Screen;

constexpr int kBof = 1;

class ZarquetteLv2Ui : public ::testing::Test, protected zq_test::X11EditorHost
{
protected:
    void SetUp() override { ASSERT_FALSE(server.get_name().empty()) << "Xvfb did not start"; }

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
        ASSERT_TRUE(idle_until([&] { return screen(64, 64) != empty; }));
        ui->log.clear();
    }
    void idle_for(int ms) { X11EditorHost::idle_for(ms, [this] { ui->idle(); }); }
    bool idle_until(const std::function<bool()>& done) { return gadu_test::idle_until([this] { ui->idle(); }, done); }
    std::string port_text(const char* what, int control) const
    {
        return std::string(what) + " " + std::to_string(ui->control_port(control));
    }

    zq_test::UridMap map;
    zq_test::Lv2Rig plugin{map};
    std::unique_ptr<Lv2UiRig> ui;
};

// The editor's windows, pixmaps and cursors go with its own connection to the
// display: a connection or a shared image left behind is the leak.
TEST_F(ZarquetteLv2Ui, ShowsTheArtworkInTheHostsWindowAtTheUsersZoomAndLeavesNothingBehind)
{
    const Screen before = screen();
    open_editor();
    EXPECT_EQ(x11.children_of(parent), std::vector<Window>{ui->widget});
    EXPECT_EQ(std::make_pair(ui->width, ui->height), std::make_pair(512, 384));
    // Black and white artwork (and the greys of its turned knobs), nothing of
    // the host's colour left.
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

    // Counted from after the first round, which sets up what stays for good.
    const vsthost::WindowProbe::Counts first = vsthost::WindowProbe::get_counts();
    ui = std::make_unique<Lv2UiRig>(plugin, map, parent);
    ui.reset();
    const vsthost::WindowProbe::Counts last = vsthost::WindowProbe::get_counts();
    EXPECT_EQ(last.gdi, first.gdi) << first.gdi_name;
    EXPECT_EQ(last.user, first.user) << first.user_name;
    EXPECT_TRUE(x11.children_of(parent).empty());

    // The user's zoom sizes the next one.
    const std::filesystem::path value =
        std::filesystem::path(std::getenv("XDG_CONFIG_HOME")) / "Velnor" / "Zarquette" / "Editor Zoom.value";
    std::filesystem::create_directories(value.parent_path());
    std::ofstream(value) << "2";
    open_editor();
    std::filesystem::remove(value);
    EXPECT_EQ(std::make_pair(ui->width, ui->height), std::make_pair(1024, 768));
    XWindowAttributes attributes{};
    XGetWindowAttributes(x11.display, ui->widget, &attributes);
    EXPECT_EQ(std::make_pair(attributes.width, attributes.height), std::make_pair(1024, 768));
}

// 128 pixels upwards are half of the knob's range. Every write of the port
// lies inside a touch of it (a quick drag's smoothing tail after the release
// may come as a touch of its own).
TEST_F(ZarquetteLv2Ui, ADragOfBofWritesHalfItsRangeInsideTouches)
{
    open_editor();
    const auto drag = [&](int steps, int ms) {
        x11.move(kBofX, kBofY);
        x11.button(Button1, true);
        for (int step = 0; step < steps; ++step)
        {
            x11.move_by(0, -4);
            idle_for(ms);
        }
    };
    drag(32, 10);
    x11.button(Button1, false);
    // Until the knob has settled and its last touch has ended.
    for (std::size_t seen = 0; seen != ui->log.size();)
    {
        seen = ui->log.size();
        idle_for(700);
    }
    ASSERT_FALSE(ui->log.empty());
    EXPECT_EQ(ui->log.back(), port_text("touch", kBof) + " off");
    bool touched = false;
    for (const std::string& entry : ui->log)
    {
        const bool touch = entry.rfind(port_text("touch", kBof), 0) == 0;
        ASSERT_TRUE(touch || entry.rfind(port_text("write", kBof), 0) == 0) << entry;
        ASSERT_TRUE(touch ? (entry.back() == 'n') != touched : touched) << entry << ": touches out of step";
        touched = touch ? !touched : touched;
    }
    EXPECT_NEAR(std::stof(ui->log.end()[-2].substr(port_text("write", kBof).size())), 50.0f, 0.5f);
    ui->exchange();
    EXPECT_NEAR(plugin.param(kBof), 0.5f, 0.005f);

    // A host that closes the editor while the knob is held gets the touch back.
    drag(8, 30);
    ASSERT_EQ(ui->log.back().rfind(port_text("write", kBof), 0), 0u) << "the knob is not held";
    ui->close();
    x11.button(Button1, false);
    EXPECT_EQ(ui->log.back(), port_text("touch", kBof) + " off");
}

// Without the touch feature the knobs and the switch still write their ports;
// without the URID map there is no learn menu (its messages need it).
TEST_F(ZarquetteLv2Ui, AHostThatOffersOnlyTheParentWindowGetsAnEditorThatWorks)
{
    open_editor(true);
    x11.move(350, 85);
    x11.button(Button1, true);
    x11.button(Button1, false);
    ASSERT_TRUE(idle_until([&] { return !ui->log.empty(); }));
    EXPECT_EQ(ui->log, std::vector<std::string>{port_text("write", 3) + " 1"});
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
    ASSERT_TRUE(idle_until([&] { return screen() != still; }));
    idle_for(300);  // the knob has settled without writing the port back
    EXPECT_TRUE(ui->log.empty());
}

// The learn menu arms the plug-in's MIDI manager through a message; the
// controller it learns comes back in the plug-in's report and the knob shows
// the marker of a bound control, steadily (a control that still waits blinks
// its marker, dark for 0.2 s of every 0.6 s).
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
    ASSERT_TRUE(idle_until([&] { return !ui->log.empty(); }));
    EXPECT_EQ(ui->log.back(), "atom " + std::to_string(plugin.plugin().use_layout().get_atom_in()) + " "
                                  + std::to_string(map.id(std::string(zarquette::lv2_uri) + "#LearnStart")));
    ui->exchange();
    const lumo::MidiMgr& mgr = *plugin.plugin().use_midi_mgr();
    EXPECT_EQ(mgr.get_pending_learn(), kBof);
    ui->exchange({0xB0, 74, 64});
    EXPECT_EQ(mgr.get_id(kBof), 74 * 65536);
    EXPECT_LT(zq_test::dark_pixels(unbound, kBofX + 32, kBofY - 40), 64);
    // A waiting marker would be dark at one of three looks 0.2 s apart.
    for (int look = 0; look < 3; ++look)
    {
        idle_for(200);
        EXPECT_EQ(zq_test::dark_pixels(screen(), kBofX + 32, kBofY - 40), 64) << look;
    }
}

}  // namespace
