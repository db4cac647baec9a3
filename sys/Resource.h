#pragma once

#include <cstddef>
#include <cstdint>

namespace sys
{

// Finds a resource embedded in the module this code is linked into, by type and
// name; both match without regard to case, as the Windows resource lookup does.
// Returns its bytes, which stay in place for the life of the module, and stores
// its size in bytes through size when size is not null. When nothing is found
// it writes one line to the debugger output (stderr outside Windows) and
// returns null.
const std::uint8_t* get_resource(const char* type, const char* name, std::size_t* size = nullptr);

}  // namespace sys
