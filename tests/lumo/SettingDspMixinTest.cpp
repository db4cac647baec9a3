#include "lumo/SettingDspMixin.h"

#include "basic/SettingMgrInterface.h"
#include "tests/basic/ScratchDir.h"
#include "tests/lumo/SettingDspMixinStub.h"

#include <gtest/gtest.h>

namespace
{

TEST(SettingDspMixin, SetupRegistersTheHostsReorderMapOnce)
{
    zq_test::SettingDspStub alone;  // without a host only the manager is set up
    EXPECT_EQ(alone.setup(), 0);
    EXPECT_NE(alone.use_setting_mgr().use_autoload(), nullptr);

    zq_test::SettingDspStub dsp;
    zq_test::ReorderHost host;
    host.reorder.setup(dsp);
    dsp.set_host(&host);
    EXPECT_EQ(dsp.setup(), 0);
    EXPECT_EQ(dsp.use_setting_mgr().get_section_name(), "Zarquette_config_section");
    EXPECT_EQ(dsp.use_setting_mgr().add_client(host.reorder), basic::SettingMgrInterface::err_client_twice);

    zq_test::ScratchDir dir;
    EXPECT_EQ(dsp.use_setting_mgr().load(dir.write_file(
                  "a.cfg", "Zarquette_config_section = { version = 1.12 parameter_reorder_map = { 1 0 } }")),
              0);
    EXPECT_EQ(host.reorder.get_internal_index(0), 1);
}

}  // namespace
