#pragma once

#include <cstdint>

namespace gadu
{
class ControlInterface;
}

namespace lumo
{

class ListenerBase;
class NormalizedParamInterface;

// The pair that binds one parameter to the control showing it, so that a
// change from the parameter side finds its control. Nothing owned.
class MetaControl
{
public:
    virtual ~MetaControl() = default;

    // Makes the listener the control's listener unless it is its first already.
    void bind(gadu::ControlInterface* control, ListenerBase* listener);
    gadu::ControlInterface* use_control() const { return _control; }
    ListenerBase* use_listener() const { return _listener; }
    NormalizedParamInterface* use_param() const;

    // The parameter-side update: never written back to the parameter.
    void update(double value, std::int32_t level);
    // The update with the parameter's own value at the lowest level.
    void refresh();

private:
    gadu::ControlInterface* _control = nullptr;
    ListenerBase* _listener = nullptr;
};

}  // namespace lumo
