#pragma once

#include "sys/Clock.h"
#include "sys/TickUnwrap.h"

#include <cstdint>

namespace sys
{

// Platform readings behind the clock seam; one implementation per platform.
std::uint32_t read_os_clock_ms();
LocalTime read_os_local_time();

// The one unwrapping of the tick that every reading of the process goes through.
TickUnwrap& use_tick_unwrap();

}  // namespace sys
