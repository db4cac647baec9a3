#include "tests/sys/ScratchKeyStorePosix.h"

#include <gtest/gtest.h>

namespace
{

// The autoload tests write the user's keys: keep them in a scratch store.
::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

}  // namespace
