#include "lumo/vst2/StorePath.h"

#include <gtest/gtest.h>

namespace
{

const std::string registry = "Velnor\\Zarquette VST2";

TEST(StorePath, HostDirectoryNamingThePluginFileGivesItsFolder)
{
    EXPECT_EQ(lumo::make_store_path("C:\\VstPlugins\\x.dll", "", registry), "C:\\VstPlugins\\Velnor\\Zarquette VST2");
    EXPECT_EQ(lumo::make_store_path("C:\\VstPlugins\\X.DLL", "", registry), "C:\\VstPlugins\\Velnor\\Zarquette VST2");
}

TEST(StorePath, HostDirectoryLosesItsTrailingSeparator)
{
    EXPECT_EQ(lumo::make_store_path("D:\\Plugins\\", "", registry), "D:\\Plugins\\Velnor\\Zarquette VST2");
    EXPECT_EQ(lumo::make_store_path("/usr/lib/vst/", "", registry), "/usr/lib/vst\\Velnor\\Zarquette VST2");
    EXPECT_EQ(lumo::make_store_path(".dll", "", registry), ".dll\\Velnor\\Zarquette VST2");
}

TEST(StorePath, WithoutHostDirectoryTheModuleFolderKeepsItsSeparator)
{
    EXPECT_EQ(lumo::make_store_path("", "C:\\VstPlugins\\x.dll", registry), "C:\\VstPlugins\\\\Velnor\\Zarquette VST2");
}

TEST(StorePath, EmptyPartsGiveTheBaseAlone)
{
    EXPECT_EQ(lumo::make_store_path("C:\\VstPlugins", "", ""), "C:\\VstPlugins");
    EXPECT_EQ(lumo::make_store_path("", "", registry), "");
}

}  // namespace
