#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost validate PLUGIN": the validation suite; exits non-zero when any
// check failed.
class ValidateCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
