#include "lumo/lv2/ui/Lv2UiDescriptor.h"

#include "lumo/HostCallGuard.h"
#include "lumo/lv2/ui/Lv2Editor.h"
#include "lumo/lv2/ui/Lv2UiRecipe.h"

#include <lv2/urid/urid.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace lumo
{
namespace
{

constexpr auto keep = sys::FpuModeGuard::Denormals::keep;

Lv2Editor::Host find_features(LV2UI_Write_Function write, LV2UI_Controller controller,
                              const LV2_Feature* const* features)
{
    Lv2Editor::Host host;
    host.write = write;
    host.controller = controller;
    for (; features != nullptr && *features != nullptr; ++features)
    {
        const LV2_Feature& f = **features;
        if (f.URI == nullptr)
        {
            continue;
        }
        if (std::strcmp(f.URI, LV2_UI__parent) == 0)
        {
            host.parent = f.data;
        }
        else if (std::strcmp(f.URI, LV2_URID__map) == 0)
        {
            host.map = static_cast<const LV2_URID_Map*>(f.data);
        }
        else if (std::strcmp(f.URI, LV2_UI__touch) == 0)
        {
            host.touch = static_cast<const LV2UI_Touch*>(f.data);
        }
        else if (std::strcmp(f.URI, LV2_UI__resize) == 0)
        {
            host.resize = static_cast<const LV2UI_Resize*>(f.data);
        }
        else if (std::strcmp(f.URI, LV2_LOG__log) == 0)
        {
            host.log = static_cast<const LV2_Log_Log*>(f.data);
        }
    }
    return host;
}

LV2UI_Handle instantiate(const LV2UI_Descriptor* descriptor, const char* plugin_uri, const char* /*bundle_path*/,
                         LV2UI_Write_Function write, LV2UI_Controller controller, LV2UI_Widget* widget,
                         const LV2_Feature* const* features)
{
    if (descriptor == nullptr || widget == nullptr)
    {
        return nullptr;
    }
    static_assert(std::is_standard_layout_v<Lv2UiDescriptor>);
    const auto* self = reinterpret_cast<const Lv2UiDescriptor*>(descriptor);
    const Lv2UiRecipe& recipe = self->use_recipe();
    const Lv2Editor::Host host = find_features(write, controller, features);
    // The editor is embedded or nothing: an X11 editor with no parent
    // window would have nowhere to be.
    if (plugin_uri == nullptr || std::strcmp(plugin_uri, recipe.plugin_uri) != 0 || host.parent == nullptr)
    {
        return nullptr;
    }
    sys::FpuModeGuard guard(keep);
    try
    {
        auto* editor = new Lv2Editor(recipe, host);
        *widget = reinterpret_cast<LV2UI_Widget>(static_cast<std::uintptr_t>(editor->get_widget()));
        return editor;
    }
    catch (...)
    {
        return nullptr;
    }
}

void cleanup(LV2UI_Handle ui)
{
    call_from_host(static_cast<Lv2Editor*>(ui), keep, false, [](Lv2Editor& e) {
        delete &e;
        return true;
    });
}

void port_event(LV2UI_Handle ui, uint32_t port, uint32_t size, uint32_t format, const void* buffer)
{
    call_from_host(static_cast<Lv2Editor*>(ui), keep, false, [&](Lv2Editor& e) {
        e.port_event(port, size, format, buffer);
        return true;
    });
}

// The editor closes when the host says so, never by itself: always 0.
int idle(LV2UI_Handle ui)
{
    call_from_host(static_cast<Lv2Editor*>(ui), keep, false, [](Lv2Editor& e) {
        e.idle();
        return true;
    });
    return 0;
}

const void* extension_data(const char* uri)
{
    static const LV2UI_Idle_Interface idle_interface{&idle};
    return uri != nullptr && std::strcmp(uri, LV2_UI__idleInterface) == 0 ? &idle_interface : nullptr;
}

}  // namespace

Lv2UiDescriptor::Lv2UiDescriptor(const Lv2UiRecipe& recipe)
    : _descriptor{recipe.uri, &instantiate, &cleanup, &port_event, &extension_data}, _recipe(&recipe)
{
}

}  // namespace lumo
