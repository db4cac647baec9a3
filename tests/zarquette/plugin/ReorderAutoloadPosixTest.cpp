#include "PluginFixture.h"

#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace
{

using lumo::vst2::PluginOp;

// Points the user's key store at a scratch folder for one test.
class ScratchStore
{
public:
    ScratchStore()
    {
        const char* old = std::getenv("XDG_CONFIG_HOME");
        _had_old = old != nullptr;
        _old = _had_old ? old : "";
        ::setenv("XDG_CONFIG_HOME", _dir.get_path().c_str(), 1);
    }
    ~ScratchStore()
    {
        if (_had_old)
        {
            ::setenv("XDG_CONFIG_HOME", _old.c_str(), 1);
        }
        else
        {
            ::unsetenv("XDG_CONFIG_HOME");
        }
    }
    ScratchStore(const ScratchStore&) = delete;
    ScratchStore& operator=(const ScratchStore&) = delete;

    const zq_test::ScratchDir& use_dir() const { return _dir; }

private:
    zq_test::ScratchDir _dir;
    bool _had_old = false;
    std::string _old;
};

// The whole way a user's parameter order takes when the plug-in starts: the
// registry names the settings file, the file holds the map, the adapter shows
// the host that order and reports the plug-in's own changes in it. A typo
// after the map costs nothing.
TEST(ReorderAutoload, TheUsersParameterOrderReachesTheHostAtStartUp)
{
    ScratchStore store;
    const std::string file = store.use_dir().write_file("mine.cfg",
                                                        "Zarquette_config_section =\n"
                                                        "{\n"
                                                        "   version = 1.12\n"
                                                        "   parameter_reorder_map = { 5_Vin_Rouge 2_Gauloises 0_Tempo }\n"
                                                        "   typo =\n"
                                                        "}\n");
    {
        sys::PersistentKeyList key("Velnor/Zarquette/Autoload", true);
        ASSERT_EQ(key.set_string("LatestConfigAutoload", "1"), 0);
        ASSERT_EQ(key.set_string("LatestConfigFile", file), 0);
    }
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

    auto& adapter = *static_cast<lumo::Vst2Plugin*>(lumo::AudioEffect::from_aeffect(effect));
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
