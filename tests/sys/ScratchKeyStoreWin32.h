#pragma once

#include "tests/sys/ScratchKeys.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <string>

namespace zq_test
{

// Removes from the user's registry, when the test program ends, every key its
// tests recorded in ScratchKeys, and checks that none is left behind. "Velnor
// Tests" itself goes only once it is empty: another test program may still be
// working below it.
class ScratchKeyStore : public ::testing::Environment
{
public:
    void TearDown() override
    {
        for (const std::string& path : ScratchKeys::get_all())
        {
            const std::string key = to_registry_path(path);
            ::RegDeleteTreeA(HKEY_CURRENT_USER, key.c_str());
            ::RegDeleteKeyA(HKEY_CURRENT_USER, key.c_str());
            HKEY left = nullptr;
            if (::RegOpenKeyExA(HKEY_CURRENT_USER, key.c_str(), 0, KEY_READ, &left) == ERROR_SUCCESS)
            {
                ::RegCloseKey(left);
                ADD_FAILURE() << "key left behind: " << path;
            }
        }
        ::RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Velnor Tests");
    }

    // "Software\<path>" with backslashes, relative to HKEY_CURRENT_USER.
    static std::string to_registry_path(std::string path)
    {
        std::replace(path.begin(), path.end(), '/', '\\');
        return "Software\\" + path;
    }
};

}  // namespace zq_test
