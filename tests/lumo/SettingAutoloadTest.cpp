#include "lumo/SettingAutoload.h"

#include "lumo/SettingMgr.h"
#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"
#include "tests/lumo/SettingDspMixinStub.h"
#include "tests/sys/ScratchKeys.h"

#include <gtest/gtest.h>

namespace
{

// Each test has a product key of its own in the user's store (on Windows the
// real registry), so the values of one test never meet another's.
class SettingAutoloadTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        dsp.texts["manufacturer"] = "Velnor Tests";
        dsp.texts["plugin_name"] = "Autoload " + zq_test::ScratchDir::make_unique_suffix();
        mgr.setup(dsp);
        zq_test::ScratchKeys::add(mgr.use_autoload()->get_base_path());
        mgr.add_client(client);
        config = dir.write_file("latest.cfg", mgr.get_section_name() + " = { version = 1.12 }");
    }

    void set_value(const char* name, const std::string& value)
    {
        sys::PersistentKeyList key(mgr.use_autoload()->get_base_path() + "/Autoload", true);
        ASSERT_EQ(key.set_string(name, value), 0);
    }

    int autoload() { return mgr.use_autoload()->autoload(mgr); }

    zq_test::SettingDspStub dsp;
    lumo::SettingMgr mgr;
    zq_test::CountingClient client;
    zq_test::ScratchDir dir;
    std::string config;
};

// The user's choice allows the autoload unless it is missing, empty or
// starts with "0"; without a file nothing is loaded either way.
TEST_F(SettingAutoloadTest, TheLatestFileIsLoadedWhenTheUserAllowsIt)
{
    EXPECT_EQ(autoload(), 0);  // no key at all, and reading the choices creates none
    EXPECT_THROW(sys::PersistentKeyList(mgr.use_autoload()->get_base_path(), false), std::runtime_error);
    set_value("LatestConfigAutoload", "1");
    EXPECT_EQ(autoload(), 0);  // no file
    set_value("LatestConfigFile", config);
    for (const auto& [choice, loads] : {std::pair{"1", 1}, {"yes", 1}, {"false", 1}, {" 0", 1}, {"0", 0},
                                        {"0x", 0}, {"", 0}, {"00", 0}})
    {
        set_value("LatestConfigAutoload", choice);
        client.loads = 0;
        EXPECT_EQ(autoload(), 0) << choice;
        EXPECT_EQ(client.loads, loads) << choice;
    }
    // The loader's answer comes back.
    set_value("LatestConfigAutoload", "1");
    client.loads = 0;
    set_value("LatestConfigFile", dir.get_path("gone.cfg"));
    EXPECT_EQ(autoload(), basic::SettingMgrInterface::err_cannot_open);
    set_value("LatestConfigFile", dir.write_file("foreign.cfg", "Other_config_section = { a = 1 }"));
    EXPECT_EQ(autoload(), lumo::SettingMgr::err_foreign_file);
    EXPECT_EQ(client.loads, 0);
}

}  // namespace
