#include "tools/vsthost/CommandLine.h"
#include "tools/vsthost/LivePlugin.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <thread>

// The test plug-ins lie beside this program; the tests run in its folder.
namespace
{

using vsthost::CommandLine;
using vsthost::LivePlugin;

TEST(LivePlugin, PlaysOnItsOwnThreadUntilStoppedThenSuspends)
{
    LivePlugin live(std::string(VSTHOST_TESTGAIN));
    live.use_audio().start();
    EXPECT_TRUE(live.use_plugin().is_resumed());
    // No timing is asserted: only that blocks keep coming while it runs.
    for (int i = 0; i < 500 && live.use_audio().get_blocks() < 3; ++i)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_GE(live.use_audio().get_blocks(), 3u);
    live.use_audio().stop();
    EXPECT_FALSE(live.use_plugin().is_resumed());
    const auto blocks = live.use_audio().get_blocks();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(live.use_audio().get_blocks(), blocks);
    // Stopping twice, and destroying a stopped loop, are harmless.
    live.use_audio().stop();
}

TEST(LivePlugin, RefusesCommandLinesItCannotServe)
{
    const auto make = [](const std::vector<std::string>& words) {
        LivePlugin live(CommandLine(words, LivePlugin::live_options, {}));
    };
    EXPECT_THROW(make({}), std::invalid_argument);
    EXPECT_THROW(make({VSTHOST_TESTGAIN, "in.wav", "extra.wav"}), std::invalid_argument);
    // A WAV file brings its own rate.
    EXPECT_THROW(make({VSTHOST_TESTGAIN, "in.wav", "--rate", "48000"}), std::invalid_argument);
    EXPECT_THROW(make({VSTHOST_TESTGAIN, "no-such-file.wav"}), std::runtime_error);
    EXPECT_THROW(make({VSTHOST_TESTGAIN, "--block", "8"}), std::invalid_argument);
}

}  // namespace
