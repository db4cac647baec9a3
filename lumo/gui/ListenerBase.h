#pragma once

#include "gadu/DefaultEventListener.h"

namespace lumo
{

class HostGuiInterface;
class NormalizedParamInterface;

// Binds one editor control to one parameter. A user's gesture on the control
// goes to the host adapter (is the parameter free at this level, take it, set
// and report the value, release it); a change from the parameter side comes
// back through refresh without being written to the parameter again.
//
// It lives in lumo/gui, a layer above both the framework core and the GUI
// toolkit: the core must not include the toolkit, and the toolkit knows
// nothing of parameters.
class ListenerBase : public gadu::DefaultEventListener
{
public:
    // Nothing the listener reads: the editor object holding it keeps itself here.
    void set_owner(void* owner) { _owner = owner; }
    void* use_owner() const { return _owner; }

    HostGuiInterface* use_host() const { return _host; }
    void set_host(HostGuiInterface* host) { _host = host; }
    // index -1 and a null parameter unbind.
    void bind(int index, NormalizedParamInterface* param);
    int get_index() const { return _index; }
    NormalizedParamInterface* use_param() const { return _param; }
    // Hands the attached control the parameter's value, at the lowest level.
    void refresh();

    // An unbound listener (or one without a host) lets the control move but
    // writes nothing: such a control stands for no parameter.
    bool check(std::int32_t level) override;
    void begin(std::int32_t level) override;
    void end(std::int32_t level) override;
    double value(double value, std::int32_t level) override;

private:
    bool is_bound() const { return _host != nullptr && _index >= 0; }

    void* _owner = nullptr;
    HostGuiInterface* _host = nullptr;
    int _index = -1;
    NormalizedParamInterface* _param = nullptr;
};

}  // namespace lumo
