#pragma once

#include <string>

namespace sys
{

// The full file name of the library (or program) this code is linked into,
// not of the host that loaded it; empty when the system cannot tell.
std::string get_module_file_name();

}  // namespace sys
