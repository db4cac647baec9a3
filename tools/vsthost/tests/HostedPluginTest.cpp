#include "tools/vsthost/AudioBuffers.h"
#include "tools/vsthost/FxExchange.h"
#include "tools/vsthost/HostedPlugin.h"
#include "tools/vsthost/PluginLibrary.h"

#include <gtest/gtest.h>

#include <stdexcept>

// The test plug-ins lie beside this program; the tests run in its folder.
namespace
{

using vsthost::FxExchange;
using vsthost::FxFile;
using vsthost::HostedPlugin;
using vsthost::PluginLibrary;

TEST(HostedPlugin, ShowsWhatThePluginTells)
{
    PluginLibrary library(VSTHOST_TESTGAIN);
    HostedPlugin plugin(library);
    EXPECT_EQ(plugin.get_unique_id(), lumo::vst2::four_cc('V', 't', 'G', 'n'));
    EXPECT_EQ(plugin.get_num_params(), 2);
    EXPECT_EQ(plugin.get_num_programs(), 3);
    EXPECT_EQ(plugin.get_text(lumo::vst2::PluginOp::get_effect_name), "TestGain");
    EXPECT_EQ(plugin.get_program_name_indexed(1), "Quiet");
    EXPECT_EQ(plugin.get_program_name_indexed(3), "");
    EXPECT_EQ(plugin.find_param("gAiN"), 0);
    EXPECT_EQ(plugin.find_param("1"), 1);
    EXPECT_EQ(plugin.find_param("2"), -1);
    EXPECT_EQ(plugin.find_param("Volume"), -1);
    EXPECT_EQ(plugin.can_do("receiveVstTimeInfo"), 1);
}

TEST(HostedPlugin, ProcessesWithTextSetParameters)
{
    PluginLibrary library(VSTHOST_TESTGAIN);
    HostedPlugin plugin(library);
    ASSERT_TRUE(plugin.set_param_text(0, "-6"));
    EXPECT_EQ(plugin.get_param_display(0), "-6.00");
    EXPECT_FALSE(plugin.set_param_text(0, "loud"));
    ASSERT_TRUE(plugin.set_param_text(1, "Inverted"));
    plugin.set_sample_rate(48000);
    plugin.set_block_size(64);
    plugin.resume();
    vsthost::AudioBuffers in(2, 64);
    vsthost::AudioBuffers out(2, 64);
    in.use_channel(0)[10] = 1.0f;
    plugin.process(in.use_pointers(), out.use_pointers(), 64);
    EXPECT_NEAR(out.use_channel(0)[10], -0.501187f, 1e-5);
    EXPECT_EQ(plugin.use_transport().get_frame(), 64.0);
    EXPECT_GE(plugin.use_requests().get_time.load(), 1);
}

TEST(HostedPlugin, RefusesFilesThatAreNoPlugins)
{
    EXPECT_THROW(PluginLibrary("no-such-plugin.so"), std::runtime_error);
}

class FxExchangeTest : public ::testing::TestWithParam<const char*>
{
};

TEST_P(FxExchangeTest, PresetsAndBanksRestoreEveryValue)
{
    PluginLibrary library(GetParam());
    HostedPlugin plugin(library);
    plugin.set_program(1);
    plugin.set_param(0, 0.3f);
    const FxFile preset = FxExchange::capture(plugin, false);
    const FxFile bank = FxExchange::capture(plugin, true);
    EXPECT_EQ(plugin.get_program(), 1);
    EXPECT_EQ(preset.is_chunk(), bank.is_chunk());

    plugin.set_param(0, 0.9f);
    plugin.set_program(2);
    plugin.set_param(0, 0.1f);
    ASSERT_EQ(FxExchange::apply(plugin, bank), 0);
    EXPECT_EQ(plugin.get_program(), 1);
    EXPECT_FLOAT_EQ(plugin.get_param(0), 0.3f);
    plugin.set_program(2);
    EXPECT_FLOAT_EQ(plugin.get_param(0), 1.0f * 60 / 72);  // the factory value came back

    plugin.set_param(0, 0.7f);
    ASSERT_EQ(FxExchange::apply(plugin, preset), 0);
    EXPECT_FLOAT_EQ(plugin.get_param(0), 0.3f);
    EXPECT_EQ(plugin.get_program_name(), "Quiet");
}

TEST_P(FxExchangeTest, RefusesFilesOfOtherPluginsAndKinds)
{
    PluginLibrary library(GetParam());
    HostedPlugin plugin(library);
    FxFile file = FxExchange::capture(plugin, false);
    file.unique_id ^= 1;
    EXPECT_EQ(FxExchange::apply(plugin, file), FxExchange::error_wrong_plugin);
    EXPECT_EQ(FxExchange::apply(plugin, file, true), 0);
    file.kind = file.is_chunk() ? FxFile::Kind::program_params : FxFile::Kind::program_chunk;
    EXPECT_EQ(FxExchange::apply(plugin, file, true), FxExchange::error_kind);
}

INSTANTIATE_TEST_SUITE_P(BothStorageKinds, FxExchangeTest, ::testing::Values(VSTHOST_TESTGAIN, VSTHOST_TESTGAIN_PARAMS));

TEST(FxExchange, AGarbledChunkIsRefusedAndChangesNothing)
{
    PluginLibrary library(VSTHOST_TESTGAIN);
    HostedPlugin plugin(library);
    FxFile file = FxExchange::capture(plugin, true);
    file.chunk.resize(file.chunk.size() - 1);
    plugin.set_param(0, 0.25f);
    EXPECT_EQ(FxExchange::apply(plugin, file), FxExchange::error_refused);
    EXPECT_FLOAT_EQ(plugin.get_param(0), 0.25f);
}

}  // namespace
