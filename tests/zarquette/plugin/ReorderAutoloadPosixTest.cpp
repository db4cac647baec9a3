#include "PluginFixture.h"

#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "SettingsAutoload.h"
#include "tests/sys/ScratchKeyStorePosix.h"

#include <string>
#include <vector>

namespace
{

using lumo::vst2::PluginOp;

// The user's key store is a scratch folder for the whole program.
::testing::Environment* const store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

// The whole way a user's parameter order takes when the plug-in starts: the
// registry names the settings file, the file holds the map, the adapter shows
// the host that order and reports the plug-in's own changes in it. A typo
// after the map costs nothing.
TEST(ReorderAutoload, TheUsersParameterOrderReachesTheHostAtStartUp)
{
    const zq_test::SettingsAutoload autoload(
        "Zarquette_config_section = { version = 1.12 parameter_reorder_map = { 5_Vin_Rouge 2_Gauloises 0_Tempo }"
        " typo = }");
    FakeHost host;
    lumo::vst2::AEffect* effect = host.open_plugin();
    ASSERT_NE(effect, nullptr);
    std::vector<std::string> names;
    for (int h = 0; h < effect->num_params; ++h)
    {
        char name[64] = {};
        FakeHost::dispatch(effect, PluginOp::get_param_name, h, 0, name);
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Vin Rouge", "Gauloises", "Tempo", "Nuclear Power", "Oignons", "Bof"}));

    lumo::Vst2WinPlugin& adapter = FakeHost::adapter_of(effect);
    effect->set_parameter(effect, 0, 0.5f);
    EXPECT_EQ(adapter.use_dsp()->use_param(5).get_norm(), 0.5f);
    EXPECT_EQ(effect->get_parameter(effect, 0), 0.5f);
    ASSERT_TRUE(adapter.take(1, 200));
    ASSERT_TRUE(adapter.set_and_report_param(1, 0.25f, 200));
    EXPECT_EQ(host.last_begin_edit.load(), 5);
    EXPECT_EQ(host.last_automated_index.load(), 5);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.25f);
    adapter.release(1, 200);
    FakeHost::close_plugin(effect);
}

}  // namespace
