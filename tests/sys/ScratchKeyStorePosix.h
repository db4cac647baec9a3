#pragma once

#include "tests/basic/ScratchDir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace zq_test
{

// Points the per-user key store at a scratch folder for the whole test
// program, so that tests never touch the user's own configuration.
class ScratchKeyStore : public ::testing::Environment
{
public:
    void SetUp() override
    {
        _dir = std::make_unique<ScratchDir>();
        ::setenv("XDG_CONFIG_HOME", _dir->get_path().c_str(), 1);
    }
    void TearDown() override { _dir.reset(); }

    std::string get_path() const { return _dir->get_path(); }

private:
    std::unique_ptr<ScratchDir> _dir;
};

}  // namespace zq_test
