#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost compare A.png B.png": how many pixels differ and the boxes around
// the areas that changed.
class CompareCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
