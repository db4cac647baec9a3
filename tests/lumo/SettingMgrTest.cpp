#include "lumo/SettingMgr.h"

#include "tests/basic/ScratchDir.h"
#include "tests/lumo/SettingDspMixinStub.h"

#include <gtest/gtest.h>

namespace
{

using lumo::SettingMgr;

class SettingMgrTest : public ::testing::Test
{
protected:
    zq_test::SettingDspStub dsp;
    SettingMgr mgr;
    zq_test::CountingClient client;
    zq_test::ScratchDir dir;
};

TEST_F(SettingMgrTest, NamesComeFromTheAudioSideAndGoIntoSaves)
{
    EXPECT_EQ(mgr.setup(dsp), 0);
    EXPECT_EQ(mgr.get_section_name(), "Zarquette_config_section");
    EXPECT_EQ(mgr.get_version(), "1.12");
    ASSERT_NE(mgr.use_autoload(), nullptr);
    EXPECT_EQ(mgr.use_autoload()->get_base_path(), "Velnor/Zarquette");
    // A save names the section and records the version, unless it failed.
    basic::ConfKeyMulti root("anything");
    int status = 0;
    mgr.before_save(root, "", status);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(root.get_name(), "Zarquette_config_section");
    EXPECT_EQ(root.get_string("version"), "1.12");

    basic::ConfKeyMulti failed("anything");
    status = -5;
    mgr.before_save(failed, "", status);
    EXPECT_EQ(failed.get_name(), "anything");
    EXPECT_EQ(failed.get_nbr_keys(), 0);

    // Punctuation in the plug-in name becomes underscores.
    dsp.texts["plugin_name"] = "Zar-quette 2.0";
    dsp.version = 2.005;
    SettingMgr other;
    other.setup(dsp);
    EXPECT_EQ(other.get_section_name(), "Zar_quette_2_0_config_section");
    EXPECT_EQ(other.get_version(), "2.00");
}

TEST_F(SettingMgrTest, OnlyFilesOfThisPluginAreLoaded)
{
    mgr.setup(dsp);
    mgr.add_client(client);
    EXPECT_EQ(mgr.load(dir.write_file("other.cfg", "Other_config_section = { version = 1.12 }")),
              SettingMgr::err_foreign_file);
    // A name that only begins like ours is foreign too.
    EXPECT_EQ(mgr.load(dir.write_file("longer.cfg", "Zarquette_config_section2 = { version = 1.12 }")),
              SettingMgr::err_foreign_file);
    EXPECT_EQ(client.loads, 0);

    EXPECT_EQ(mgr.load(dir.write_file("ours.cfg", "Zarquette_config_section = { version = 1.12 a = 1 }")), 0);
    EXPECT_EQ(client.loads, 1);
    EXPECT_EQ(client.keys, 2);
    EXPECT_EQ(mgr.load(dir.write_file("empty.cfg", "Zarquette_config_section = { }\n")), 0);
    EXPECT_EQ(client.keys, 0);
}

}  // namespace
