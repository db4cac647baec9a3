#include "lumo/lv2/Lv2Descriptor.h"

#include "lumo/HostCallGuard.h"
#include "lumo/lv2/Lv2Plugin.h"
#include "lumo/lv2/Lv2PluginRecipe.h"
#include "sys/FpuModeGuard.h"

#include <lv2/log/log.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <cmath>
#include <cstring>
#include <type_traits>

namespace lumo
{
namespace
{

constexpr auto keep = sys::FpuModeGuard::Denormals::keep;
constexpr auto flush = sys::FpuModeGuard::Denormals::flush;

Lv2Plugin::Features find_features(const LV2_Feature* const* features)
{
    Lv2Plugin::Features found;
    for (; features != nullptr && *features != nullptr; ++features)
    {
        const LV2_Feature& f = **features;
        if (f.URI == nullptr)
        {
            continue;
        }
        if (std::strcmp(f.URI, LV2_URID__map) == 0)
        {
            found.map = static_cast<const LV2_URID_Map*>(f.data);
        }
        else if (std::strcmp(f.URI, LV2_LOG__log) == 0)
        {
            found.log = static_cast<const LV2_Log_Log*>(f.data);
        }
    }
    return found;
}

LV2_Handle instantiate(const LV2_Descriptor* descriptor, double rate, const char* bundle_path,
                       const LV2_Feature* const* features)
{
    // The audio side keeps its rate as a float: a rate must be a positive
    // number that fits one.
    if (descriptor == nullptr || !(rate > 0.0) || !std::isfinite(static_cast<float>(rate)))
    {
        return nullptr;
    }
    static_assert(std::is_standard_layout_v<Lv2Descriptor>);
    const auto* self = reinterpret_cast<const Lv2Descriptor*>(descriptor);
    sys::FpuModeGuard guard(keep);
    try
    {
        return new Lv2Plugin(self->use_recipe(), rate, bundle_path != nullptr ? bundle_path : "",
                             find_features(features));
    }
    catch (...)
    {
        return nullptr;
    }
}

template <class Result, class Call>
Result guarded(LV2_Handle instance, sys::FpuModeGuard::Denormals denormals, Result neutral, Call call)
{
    return call_from_host(static_cast<Lv2Plugin*>(instance), denormals, neutral, call);
}

void connect_port(LV2_Handle instance, uint32_t port, void* data)
{
    guarded(instance, keep, false, [&](Lv2Plugin& p) {
        p.connect_port(port, data);
        return true;
    });
}

void reset(LV2_Handle instance)
{
    guarded(instance, keep, false, [](Lv2Plugin& p) {
        p.reset();
        return true;
    });
}

void run(LV2_Handle instance, uint32_t frames)
{
    guarded(instance, flush, false, [&](Lv2Plugin& p) {
        p.run(frames);
        return true;
    });
}

void cleanup(LV2_Handle instance)
{
    guarded(instance, keep, false, [](Lv2Plugin& p) {
        delete &p;
        return true;
    });
}

LV2_State_Status save(LV2_Handle instance, LV2_State_Store_Function store, LV2_State_Handle handle,
                      uint32_t /*flags*/, const LV2_Feature* const* /*features*/)
{
    return guarded(instance, keep, LV2_STATE_ERR_UNKNOWN, [&](Lv2Plugin& p) { return p.save(store, handle); });
}

LV2_State_Status restore(LV2_Handle instance, LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                         uint32_t /*flags*/, const LV2_Feature* const* /*features*/)
{
    return guarded(instance, keep, LV2_STATE_ERR_UNKNOWN,
                   [&](Lv2Plugin& p) { return p.restore(retrieve, handle); });
}

const void* extension_data(const char* uri)
{
    static const LV2_State_Interface state{&save, &restore};
    return uri != nullptr && std::strcmp(uri, LV2_STATE__interface) == 0 ? &state : nullptr;
}

}  // namespace

Lv2Descriptor::Lv2Descriptor(const Lv2PluginRecipe& recipe)
    : _descriptor{recipe.uri, &instantiate, &connect_port, &reset, &run, &reset, &cleanup, &extension_data},
      _recipe(&recipe)
{
}

}  // namespace lumo
