#pragma once

#include "tests/basic/ScratchDir.h"

#include <string>
#include <vector>

namespace zq_test
{

// The keys tests create below the user's "Software" key: all below "Velnor
// Tests", named at random so that test programs running at once never share
// one, and recorded so that the platform's scratch store removes them when the
// program ends (on Windows they live in the user's real registry).
class ScratchKeys
{
public:
    // "Velnor Tests/<stem> <random>".
    static std::string make(const std::string& stem)
    {
        return add("Velnor Tests/" + stem + " " + ScratchDir::make_unique_suffix());
    }
    // Records a path made elsewhere (a settings manager's base path).
    static std::string add(const std::string& path)
    {
        use_list().push_back(path);
        return path;
    }
    static const std::vector<std::string>& get_all() { return use_list(); }

private:
    static std::vector<std::string>& use_list()
    {
        static std::vector<std::string> list;
        return list;
    }
};

}  // namespace zq_test
