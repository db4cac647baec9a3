#include "lumo/vst2/StorePath.h"

#include <gtest/gtest.h>

namespace
{

const std::string registry = "Velnor\\Zarquette VST2";

// The host's directory, when it names the plug-in's file, gives its folder
// and otherwise loses its trailing separator; without one, the module's
// folder keeps its own. Empty parts give the base alone.
TEST(StorePath, TheFolderBesideThePluginThenTheRegistryPath)
{
    const struct
    {
        const char* host_dir;
        const char* module;
        std::string registry_path;
        const char* expected;
    } cases[] = {
        {"C:\\VstPlugins\\x.dll", "", registry, "C:\\VstPlugins\\Velnor\\Zarquette VST2"},
        {"C:\\VstPlugins\\X.DLL", "", registry, "C:\\VstPlugins\\Velnor\\Zarquette VST2"},
        {"D:\\Plugins\\", "", registry, "D:\\Plugins\\Velnor\\Zarquette VST2"},
        {"/usr/lib/vst/", "", registry, "/usr/lib/vst\\Velnor\\Zarquette VST2"},
        {".dll", "", registry, ".dll\\Velnor\\Zarquette VST2"},
        {"", "C:\\VstPlugins\\x.dll", registry, "C:\\VstPlugins\\\\Velnor\\Zarquette VST2"},
        {"C:\\VstPlugins", "", "", "C:\\VstPlugins"},
        {"", "", registry, ""},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(lumo::make_store_path(c.host_dir, c.module, c.registry_path), c.expected) << c.host_dir << c.module;
    }
}

}  // namespace
