#include "sys/ClockPin.h"

#include <atomic>
#include <cstdint>

namespace sys
{
namespace
{

std::atomic<bool> pin_active{false};
std::atomic<double> pinned_seconds{0.0};
// The calendar fields packed into one word, so a reader never sees half an update.
std::atomic<std::uint64_t> pinned_local{0};

std::uint64_t pack(const LocalTime& t)
{
    auto field = [](int v, unsigned shift) {
        return static_cast<std::uint64_t>(static_cast<std::uint16_t>(v)) << shift;
    };
    return field(t.year, 48) | field(t.month, 40) | field(t.day, 32)
         | field(t.hour, 24) | field(t.minute, 16) | field(t.second, 8);
}

LocalTime unpack(std::uint64_t w)
{
    auto field = [w](unsigned shift, std::uint64_t mask) {
        return static_cast<int>((w >> shift) & mask);
    };
    return LocalTime{field(48, 0xffff), field(40, 0xff), field(32, 0xff),
                     field(24, 0xff), field(16, 0xff), field(8, 0xff)};
}

}  // namespace

ClockPin::ClockPin(double seconds, const LocalTime& local)
{
    set_seconds(seconds);
    set_local_time(local);
    pin_active.store(true, std::memory_order_release);
}

ClockPin::~ClockPin()
{
    pin_active.store(false, std::memory_order_release);
}

void ClockPin::set_seconds(double seconds)
{
    pinned_seconds.store(seconds, std::memory_order_release);
}

void ClockPin::advance(double seconds)
{
    set_seconds(get_seconds() + seconds);
}

void ClockPin::set_local_time(const LocalTime& local)
{
    pinned_local.store(pack(local), std::memory_order_release);
}

bool ClockPin::is_active()
{
    return pin_active.load(std::memory_order_acquire);
}

double ClockPin::get_seconds()
{
    return pinned_seconds.load(std::memory_order_acquire);
}

LocalTime ClockPin::get_local_time()
{
    return unpack(pinned_local.load(std::memory_order_acquire));
}

}  // namespace sys
