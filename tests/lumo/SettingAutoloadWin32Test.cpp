#include "tests/sys/ScratchKeyStoreWin32.h"

#include <gtest/gtest.h>

namespace
{

// The autoload tests write the user's real registry: every key they create
// goes when the program ends.
::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

}  // namespace
