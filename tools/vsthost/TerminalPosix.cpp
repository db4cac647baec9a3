#include "Terminal.h"

#include <unistd.h>

namespace vsthost
{

bool is_stdout_terminal()
{
    return isatty(STDOUT_FILENO) != 0;
}

}  // namespace vsthost
