#include "Terminal.h"

#include <windows.h>

namespace vsthost
{

bool is_stdout_terminal()
{
    // A console answers the console-mode query; files and pipes do not.
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0;
}

}  // namespace vsthost
