#include "sys/ModulePath.h"

#include <gtest/gtest.h>

namespace
{

TEST(ModulePath, NamesTheTestProgramItself)
{
    const std::string path = sys::get_module_file_name();
    ASSERT_FALSE(path.empty());
    EXPECT_NE(path.find("test_sys"), std::string::npos) << path;
}

}  // namespace
