// The knobs read the mouse-compatibility setting from the per-user key store,
// and its tests write it: every test of this program works on a scratch store,
// never on the user's own settings. (Under wine the store is the build tree's
// own prefix.)
#include "tests/sys/ScratchKeyStorePosix.h"

namespace
{

::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

}  // namespace
