#pragma once

#include "sys/Clock.h"

#include <cstdint>

namespace sys
{

// Platform readings behind the clock seam; one implementation per platform.
std::uint32_t read_os_clock_ms();
LocalTime read_os_local_time();

}  // namespace sys
