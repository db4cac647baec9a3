#include "tools/vsthost/ValidationOptions.h"
#include "tools/vsthost/Validator.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using vsthost::ValidationOptions;
using vsthost::Validator;
using Names = std::vector<std::string>;

TEST(Validator, TheLevelChoosesTheGroupsAndNamedOnesRunWhateverTheLevel)
{
    ValidationOptions options;
    options.level = 1;
    EXPECT_EQ(Validator::select_groups(options), (Names{"lifecycle", "programs", "state", "parameters", "audio", "midi"}));
    options.level = 2;
    EXPECT_EQ(Validator::select_groups(options).size(), 11u);
    EXPECT_EQ(Validator::select_groups(options).back(), "oversized");
    options.level = 1;
    options.groups = {"editor", "audio"};
    EXPECT_EQ(Validator::select_groups(options), (Names{"audio", "editor"}));
    options.groups = {"audio", "sound"};
    EXPECT_THROW(Validator::select_groups(options), std::invalid_argument);
}

}  // namespace
