#pragma once

namespace lumo
{

// A helper object an effect can register with its core besides parameters;
// the core refreshes the components of its first list on request.
class PluginComponentInterface
{
public:
    virtual ~PluginComponentInterface() = default;
    virtual void refresh() = 0;
};

}  // namespace lumo
