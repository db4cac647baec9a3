#pragma once

#include "lumo/DspInterface.h"
#include "lumo/TempoRecord.h"

#include <memory>
#include <string>
#include <vector>

namespace lumo
{

class NormalizedParamInterface;
class PluginComponentInterface;

// Base of an effect: keeps its parameters (owned through shared handles, in
// registration order: the internal index) and the shared tempo record.
class PluginInternal : public virtual DspInterface
{
public:
    ~PluginInternal() override = default;

    // Captures every registered parameter's normalized value, in registration order.
    void get_param_values(ProgramSlot& program) const override;

    virtual void add_param(const std::shared_ptr<NormalizedParamInterface>& param);
    virtual void add_component_c(PluginComponentInterface* component);
    virtual void add_component_a(PluginComponentInterface* component);
    virtual int get_nbr_components_c() const;
    virtual PluginComponentInterface* use_component_c(int index);
    virtual const PluginComponentInterface* use_component_c(int index) const;
    virtual void add_component_b(PluginComponentInterface* component);
    virtual TempoRecord* use_tempo_record();
    // Refreshes every component of the first list.
    virtual void refresh_components();
    // "Velnor/" followed by the effect's "plugin_name".
    virtual std::string get_config_folder() const;

    int get_nbr_registered_params() const { return _nbr_params; }
    int get_nbr_components_a() const { return static_cast<int>(_components_a.size()); }
    NormalizedParamInterface& use_registered_param(int index) const;

protected:
    // The inverse of registration: forgets every parameter and component.
    void clear_registry();

private:
    std::vector<std::shared_ptr<NormalizedParamInterface>> _params;
    std::vector<PluginComponentInterface*> _components_a;
    std::vector<PluginComponentInterface*> _components_b;
    std::vector<PluginComponentInterface*> _components_c;
    int _nbr_params = 0;
    TempoRecord _tempo;
};

}  // namespace lumo
