#pragma once

// GoogleTest and the LV2 headers before Xlib, which defines names such as
// None and Bool as macros.
#include <gtest/gtest.h>

#include "tests/zarquette/lv2/Lv2Rig.h"

#include "tests/gadu/x11/X11Rig.h"

#include <lv2/ui/ui.h>

#include <dlfcn.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <stdexcept>
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
    Lv2UiRig(Lv2Rig& plugin, UridMap& map, Window parent, bool minimal = false) : _plugin(plugin), _map(map)
    {
        const LV2_Feature parent_feature{LV2_UI__parent, reinterpret_cast<void*>(static_cast<std::uintptr_t>(parent))};
        const LV2_Feature map_feature{LV2_URID__map, const_cast<LV2_URID_Map*>(map.use())};
        const LV2_Feature touch_feature{LV2_UI__touch, &_touch};
        const LV2_Feature resize_feature{LV2_UI__resize, &_resize};
        const LV2_Feature log_feature{LV2_LOG__log, const_cast<LV2_Log_Log*>(plugin.use_log())};
        const LV2_Feature* features[] = {&parent_feature, &map_feature, &touch_feature, &resize_feature,
                                         &log_feature, nullptr};
        if (minimal)
        {
            features[1] = nullptr;
        }
        LV2UI_Widget widget_handle = nullptr;
        handle = use_descriptor().instantiate(&use_descriptor(), zarquette::lv2_uri, ZQ_LV2_BUNDLE_DIR "/",
                                              &Lv2UiRig::write, this, &widget_handle, features);
        if (handle == nullptr)
        {
            throw std::runtime_error("no editor: " + plugin.log);
        }
        widget = static_cast<Window>(reinterpret_cast<std::uintptr_t>(widget_handle));
        // A host tells a new editor every control's value.
        for (int i = 0; i < _plugin.plugin().use_layout().get_nbr_controls(); ++i)
        {
            port_event(control_port(i), _plugin.control(_plugin.plugin().use_control(i).get_symbol().c_str()));
        }
    }
    ~Lv2UiRig() { close(); }
    Lv2UiRig(const Lv2UiRig&) = delete;
    Lv2UiRig& operator=(const Lv2UiRig&) = delete;

    // The editor's library, loaded once per test program.
    static const LV2UI_Descriptor& use_descriptor()
    {
        static const LV2UI_Descriptor* const descriptor = [] {
            void* library = dlopen(ZQ_LV2_BUNDLE_DIR "/zarquette_ui.so", RTLD_NOW | RTLD_LOCAL);
            const auto entry = library != nullptr ? reinterpret_cast<LV2UI_DescriptorFunction>(
                                                        dlsym(library, "lv2ui_descriptor"))
                                                  : nullptr;
            if (entry == nullptr)
            {
                throw std::runtime_error(std::string("no editor library: ") + dlerror());
            }
            return entry(0);
        }();
        return *descriptor;
    }
    std::uint32_t control_port(int index) const
    {
        return _plugin.plugin().use_layout().get_first_control() + static_cast<std::uint32_t>(index);
    }

    // The host's calls; close is the cleanup, after which the log stays.
    void idle()
    {
        const auto* idle =
            static_cast<const LV2UI_Idle_Interface*>(use_descriptor().extension_data(LV2_UI__idleInterface));
        idle->idle(handle);
    }
    void close()
    {
        if (handle != nullptr)
        {
            use_descriptor().cleanup(handle);
            handle = nullptr;
        }
    }
    void port_event(std::uint32_t port, float value) { port_event(port, sizeof(value), 0, &value); }
    void port_event(std::uint32_t port, std::uint32_t size, std::uint32_t format, const void* buffer)
    {
        use_descriptor().port_event(handle, port, size, format, buffer);
    }
    // One block of the plug-in with what the editor sent since the last one
    // (and a MIDI message, if given), and its notify output to the editor.
    void exchange(const std::vector<std::uint8_t>& midi = {})
    {
        Lv2Input in = _plugin.input();
        if (!midi.empty())
        {
            in.midi(0, midi);
        }
        for (const std::vector<std::uint8_t>& atom : _to_plugin)
        {
            in.atom(0, *reinterpret_cast<const LV2_Atom*>(atom.data()));
        }
        _to_plugin.clear();
        _plugin.run(64, in);
        const std::uint32_t notify = _plugin.plugin().use_layout().get_atom_out();
        LV2_ATOM_SEQUENCE_FOREACH(&_plugin.use_output(), e)
        {
            port_event(notify, static_cast<std::uint32_t>(sizeof(LV2_Atom) + e->body.size),
                       _map.id(LV2_ATOM__eventTransfer), &e->body);
        }
    }

    LV2UI_Handle handle = nullptr;
    Window widget = 0;
    // "touch PORT on|off", "write PORT VALUE", "atom PORT TYPE-URI".
    std::vector<std::string> log;
    // The size the editor asked the host for.
    int width = 0;
    int height = 0;

private:
    static void write(LV2UI_Controller controller, std::uint32_t port, std::uint32_t size, std::uint32_t format,
                      const void* buffer)
    {
        auto& self = *static_cast<Lv2UiRig*>(controller);
        int n = 0;
        const lumo::Lv2PortLayout::Kind kind = self._plugin.plugin().use_layout().get_kind(port, n);
        if (kind == lumo::Lv2PortLayout::Kind::control && format == 0 && size == sizeof(float))
        {
            float value = 0.0f;
            std::memcpy(&value, buffer, sizeof(value));
            char text[64];
            std::snprintf(text, sizeof(text), "write %u %g", port, static_cast<double>(value));
            self.log.push_back(text);
            self._plugin.control(self._plugin.plugin().use_control(n).get_symbol().c_str()) = value;
        }
        else if (kind == lumo::Lv2PortLayout::Kind::atom_in && format == self._map.id(LV2_ATOM__eventTransfer))
        {
            const auto* bytes = static_cast<const std::uint8_t*>(buffer);
            self._to_plugin.emplace_back(bytes, bytes + size);
            const auto* object = static_cast<const LV2_Atom_Object*>(buffer);
            self.log.push_back("atom " + std::to_string(port) + " " + std::to_string(object->body.otype));
        }
        else
        {
            ADD_FAILURE() << "a write the plug-in has no port for: port " << port << ", format " << format;
        }
    }
    static void touch(LV2UI_Feature_Handle handle, std::uint32_t port, bool grabbed)
    {
        static_cast<Lv2UiRig*>(handle)->log.push_back("touch " + std::to_string(port) + (grabbed ? " on" : " off"));
    }
    static int resize(LV2UI_Feature_Handle handle, int width, int height)
    {
        static_cast<Lv2UiRig*>(handle)->width = width;
        static_cast<Lv2UiRig*>(handle)->height = height;
        return 0;
    }

    Lv2Rig& _plugin;
    UridMap& _map;
    std::vector<std::vector<std::uint8_t>> _to_plugin;
    LV2UI_Touch _touch{this, &Lv2UiRig::touch};
    LV2UI_Resize _resize{this, &Lv2UiRig::resize};
};

}  // namespace zq_test
