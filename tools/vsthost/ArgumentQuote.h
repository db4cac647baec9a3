#pragma once

#include <string>

namespace vsthost
{

// One word of a Windows command line, quoted so that the C runtime's parser
// of the program started gives it back unchanged: paths with spaces, quotes
// and the backslashes before them.
std::string quote_argument(const std::string& word);

}  // namespace vsthost
