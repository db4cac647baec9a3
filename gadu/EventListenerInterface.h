#pragma once

#include <cstdint>

namespace gadu
{

class ControlInterface;
class MessageInterface;

// What a control tells the outside world: presses, value changes and every
// message it handles. The level is the priority of the change's source (a
// drag, the smoothing tail, a reset), which the listener may weigh before
// letting the change through.
class EventListenerInterface
{
public:
    virtual ~EventListenerInterface() = default;

    virtual void on_press() = 0;
    // May the control change its value at this level?
    virtual bool check(std::int32_t level) = 0;
    // A gesture starts or ends at this level.
    virtual void begin(std::int32_t level) = 0;
    virtual void end(std::int32_t level) = 0;
    // Each returns the value to keep. forward hands a change on to the target;
    // value sees a change that comes from the user, value_from_param one that
    // comes from the parameter side (and must not be written back to it).
    virtual double forward(double value, std::int32_t level) = 0;
    virtual double value(double value, std::int32_t level) = 0;
    virtual double value_from_param(double value, std::int32_t level) = 0;
    virtual void before_message(const MessageInterface& message) = 0;
    virtual void after_message(const MessageInterface& message) = 0;
    virtual void attach_control(ControlInterface* control) = 0;
    virtual ControlInterface* use_control() const = 0;
    virtual void set_target(EventListenerInterface* target) = 0;
};

}  // namespace gadu
