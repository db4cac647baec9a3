#include "lumo/PluginInternal.h"

#include "lumo/NormalizedParamInterface.h"
#include "lumo/PluginComponentInterface.h"
#include "lumo/ProgramSlot.h"
#include "lumo/SettingKeys.h"

namespace lumo
{

void PluginInternal::get_param_values(ProgramSlot& program) const
{
    program.set_nbr_values(_nbr_params);
    for (int i = 0; i < _nbr_params; ++i)
    {
        program.set_value(i, _params[static_cast<std::size_t>(i)]->get_norm());
    }
}

void PluginInternal::add_param(const std::shared_ptr<NormalizedParamInterface>& param)
{
    _params.push_back(param);
    ++_nbr_params;
}

void PluginInternal::add_component_c(PluginComponentInterface* component)
{
    _components_c.push_back(component);
}

void PluginInternal::add_component_a(PluginComponentInterface* component)
{
    _components_a.push_back(component);
}

int PluginInternal::get_nbr_components_c() const
{
    return static_cast<int>(_components_c.size());
}

PluginComponentInterface* PluginInternal::use_component_c(int index)
{
    return _components_c[static_cast<std::size_t>(index)];
}

const PluginComponentInterface* PluginInternal::use_component_c(int index) const
{
    return _components_c[static_cast<std::size_t>(index)];
}

void PluginInternal::add_component_b(PluginComponentInterface* component)
{
    _components_b.push_back(component);
}

TempoRecord* PluginInternal::use_tempo_record()
{
    return &_tempo;
}

void PluginInternal::refresh_components()
{
    for (PluginComponentInterface* c : _components_a)
    {
        c->refresh();
    }
}

std::string PluginInternal::get_config_folder() const
{
    return "Velnor/" + get_setting_str(setting_key::plugin_name);
}

NormalizedParamInterface& PluginInternal::use_registered_param(int index) const
{
    return *_params[static_cast<std::size_t>(index)];
}

void PluginInternal::clear_registry()
{
    _params.clear();
    _components_a.clear();
    _components_b.clear();
    _components_c.clear();
    _nbr_params = 0;
}

}  // namespace lumo
