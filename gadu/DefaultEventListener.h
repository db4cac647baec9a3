#pragma once

#include "gadu/EventListenerInterface.h"

namespace gadu
{

// A listener that lets every change through unchanged and hands value changes
// and messages on to a target listener (none: they end here). Editors derive
// from it and bind the changes to whatever the control stands for.
class DefaultEventListener : public EventListenerInterface
{
public:
    void on_press() override {}
    bool check(std::int32_t /*level*/) override { return true; }
    void begin(std::int32_t /*level*/) override {}
    void end(std::int32_t /*level*/) override {}
    double forward(double value, std::int32_t level) override;
    double value(double value, std::int32_t /*level*/) override { return value; }
    double value_from_param(double value, std::int32_t /*level*/) override { return value; }
    void before_message(const MessageInterface& message) override;
    void after_message(const MessageInterface& message) override;
    void attach_control(ControlInterface* control) override { _control = control; }
    ControlInterface* use_control() const override { return _control; }
    void set_target(EventListenerInterface* target) override { _target = target; }
    EventListenerInterface* use_target() const { return _target; }

private:
    EventListenerInterface* _target = nullptr;
    ControlInterface* _control = nullptr;
};

}  // namespace gadu
