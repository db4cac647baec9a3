#pragma once

// GoogleTest and the LV2 headers before Xlib, which defines names such as
// None and Bool as macros.
#include <gtest/gtest.h>

#include "tests/zarquette/lv2/Lv2Rig.h"

#include "tests/gadu/x11/X11Rig.h"

#include <lv2/ui/ui.h>

#include <cstdint>
#include <string>
#include <vector>

namespace zq_test
{

// A minimal LV2 host of the plug-in's editor: the bundle's editor library
// loaded by its descriptor (dlopen, lv2ui_descriptor), an instance embedded
// in a window of the test's X server with the URID map, the port-write
// function, the touch and resize features and the plug-in rig's log. It
// carries the editor's port writes to the plug-in (control ports, atoms into
// its control port) and the plug-in's notify output back to the editor, and
// logs every write and touch.
class Lv2UiRig
{
public:
    // minimal: a host that offers the parent window and nothing else.
    Lv2UiRig(Lv2Rig& plugin, UridMap& map, Window parent, bool minimal = false);
    ~Lv2UiRig() { close(); }
    Lv2UiRig(const Lv2UiRig&) = delete;
    Lv2UiRig& operator=(const Lv2UiRig&) = delete;

    // The editor's library, loaded once per test program.
    static const LV2UI_Descriptor& use_descriptor();
    std::uint32_t control_port(int index) const;

    // The host's calls; close is the cleanup, after which the log stays.
    void idle();
    void close();
    void port_event(std::uint32_t port, float value);
    void port_event(std::uint32_t port, std::uint32_t size, std::uint32_t format, const void* buffer);
    // One block of the plug-in with what the editor sent since the last one
    // (and a MIDI message, if given), and its notify output to the editor.
    void exchange(const std::vector<std::uint8_t>& midi = {});

    LV2UI_Handle handle = nullptr;
    Window widget = 0;
    // "touch PORT on|off", "write PORT VALUE", "atom PORT TYPE-URI".
    std::vector<std::string> log;
    // The size the editor asked the host for.
    int width = 0;
    int height = 0;

private:
    static void write(LV2UI_Controller controller, std::uint32_t port, std::uint32_t size, std::uint32_t format,
                      const void* buffer);
    static void touch(LV2UI_Feature_Handle handle, std::uint32_t port, bool grabbed);
    static int resize(LV2UI_Feature_Handle handle, int width, int height);

    Lv2Rig& _plugin;
    UridMap& _map;
    std::vector<std::vector<std::uint8_t>> _to_plugin;
    LV2UI_Touch _touch{this, &Lv2UiRig::touch};
    LV2UI_Resize _resize{this, &Lv2UiRig::resize};
};

}  // namespace zq_test
