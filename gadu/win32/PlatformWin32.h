#pragma once

#include <windows.h>

#include <string>

namespace gadu
{

// The module this code is linked into (the plug-in's library, not the host
// that loaded it): window classes are registered for it.
HINSTANCE use_module_win32();

// The operation's name, " : " and the system's text for the calling thread's
// last error, for a failure report.
std::string get_last_error_text_win32(const char* operation);

}  // namespace gadu
