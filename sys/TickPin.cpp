#include "sys/TickPin.h"

#include "sys/ClockOs.h"

#include <atomic>

namespace sys
{
namespace
{

std::atomic<bool> pin_active{false};
std::atomic<std::uint32_t> pinned_tick{0};

}  // namespace

TickPin::TickPin(std::uint32_t tick)
{
    set_tick(tick);
    // The pinned ticks have nothing to do with the readings before: start the
    // unwrapping afresh, here and again when the operating system takes over.
    use_tick_unwrap().restart();
    pin_active.store(true, std::memory_order_release);
}

TickPin::~TickPin()
{
    pin_active.store(false, std::memory_order_release);
    use_tick_unwrap().restart();
}

void TickPin::set_tick(std::uint32_t tick)
{
    pinned_tick.store(tick, std::memory_order_release);
}

void TickPin::advance_ms(std::uint32_t ms)
{
    set_tick(get_tick() + ms);
}

bool TickPin::is_active()
{
    return pin_active.load(std::memory_order_acquire);
}

std::uint32_t TickPin::get_tick()
{
    return pinned_tick.load(std::memory_order_acquire);
}

}  // namespace sys
