#pragma once

#include <cstddef>
#include <cstdint>

namespace sys
{

// Platform side of get_resource; one implementation per platform.

// The resource's bytes and size, or null (size untouched) when it is not there.
const std::uint8_t* find_os_resource(const char* type, const char* name, std::size_t& size);

// Appends text to the debugger output.
void write_os_debug(const char* text);

}  // namespace sys
