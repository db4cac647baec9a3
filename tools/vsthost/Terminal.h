#pragma once

namespace vsthost
{

// Whether standard output goes to a terminal (and not to a file or a pipe).
bool is_stdout_terminal();

}  // namespace vsthost
