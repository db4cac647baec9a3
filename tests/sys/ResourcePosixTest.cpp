// Outside Windows the debugger output is stderr, which a test can read.
#include "sys/Resource.h"

#include <gtest/gtest.h>

namespace
{

TEST(ResourcePosix, AMissingResourceIsReportedOnTheDebugOutput)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(sys::get_resource("WAVE", "nosuchcat"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "sys::get_resource: Error: couldn't load ressource. Name : nosuchcat, Type : WAVE\n");
}

}  // namespace
