#pragma once

#include "gadu/MessageInterface.h"
#include "gadu/ProcessIdCounter.h"

#include <cstdint>

namespace gadu
{

class MessageHandlerInterface;

// Groups the messages of the timer service.
class TimerMessage
{
public:
    virtual ~TimerMessage() = default;

protected:
    TimerMessage() = default;
};

// One firing of a timer, sent to the handler that set it.
class Notify : public MessageDown, public TimerMessage
{
public:
    Notify(std::uint32_t timer_id, double now) : MessageDown(Rect{}), _timer_id(timer_id), _now(now) {}

    std::uint32_t get_timer_id() const { return _timer_id; }
    // Seconds of the toolkit's clock at this run of the timer service.
    double get_time() const { return _now; }

private:
    std::uint32_t _timer_id;
    double _now;
};

// Asks for Notify messages every period seconds. Building the message draws a
// fresh id and writes it back to the requester, which needs it to clear the
// timer later, whether or not the window accepts it.
class SetTimer : public MessageUp, public TimerMessage
{
public:
    SetTimer(MessageHandlerInterface* handler, float period, std::uint32_t& timer_id)
        : _handler(handler), _period(period), _timer_id(TimerIdGenerator::next())
    {
        timer_id = _timer_id;
    }

    MessageHandlerInterface* use_handler() const { return _handler; }
    float get_period() const { return _period; }
    std::uint32_t get_timer_id() const { return _timer_id; }

    // Ids are unique in the process, so two windows' timers never clash.
    using TimerIdGenerator = ProcessIdCounter<SetTimer>;

private:
    MessageHandlerInterface* _handler;
    float _period;
    std::uint32_t _timer_id;
};

class ClearTimer : public MessageUp, public TimerMessage
{
public:
    explicit ClearTimer(std::uint32_t timer_id) : _timer_id(timer_id) {}
    std::uint32_t get_timer_id() const { return _timer_id; }

private:
    std::uint32_t _timer_id;
};

}  // namespace gadu
