#include "tools/vsthost/BenchCommand.h"
#include "tools/vsthost/BenchStatistics.h"
#include "tools/vsthost/CommandLine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using vsthost::BenchCommand;
using vsthost::BenchStatistics;
using vsthost::CommandLine;

BenchCommand::Options parse(const std::vector<std::string>& words)
{
    const CommandLine args(words, {"--set", "--norm", "--preset", "--block", "--rate", "--seconds", "--repeats", "--tempo"},
                           {});
    return BenchCommand::parse(args);
}

TEST(BenchCommand, ParsesOptions)
{
    const auto set = parse({"plug.so", "--block", "1", "--rate=96000", "--seconds", "2.5", "--repeats", "3"});
    EXPECT_EQ(set.block, 1);
    EXPECT_EQ(set.rate, 96000.0);
    EXPECT_EQ(set.seconds, 2.5);
    EXPECT_EQ(set.repeats, 3);

    EXPECT_EQ(parse({"plug.so", "in.wav"}).input, "in.wav");
}

TEST(BenchCommand, RefusesWhatMakesNoBench)
{
    for (const auto& words : std::vector<std::vector<std::string>>{
             {},                                       // no plug-in
             {"plug.so", "in.wav", "extra"},           // too many files
             {"plug.so", "--block", "0"},              // no frames
             {"plug.so", "--block", "32.5"},           // half a frame
             {"plug.so", "--repeats", "0"},            // nothing to measure
             {"plug.so", "--seconds", "-1"},           // negative time
             {"plug.so", "in.wav", "--rate", "48000"}, // a file brings its own rate
             {"plug.so", "--length", "3"},             // render's option, not bench's
         })
    {
        EXPECT_THROW(parse(words), std::invalid_argument) << words.size();
    }
}

TEST(BenchStatistics, SpreadOfOddEvenAndEmptyLists)
{
    const auto odd = BenchStatistics::get_spread({5.0, 1.0, 3.0});
    EXPECT_EQ(odd.min, 1.0);
    EXPECT_EQ(odd.median, 3.0);
    EXPECT_EQ(odd.max, 5.0);
    EXPECT_EQ(BenchStatistics::get_spread({4.0, 1.0, 3.0, 2.0}).median, 2.5);
    const auto none = BenchStatistics::get_spread({});
    EXPECT_EQ(none.min, 0.0);
    EXPECT_EQ(none.max, 0.0);
}

TEST(BenchStatistics, NearestRankPercentile)
{
    std::vector<double> hundred;
    for (int i = 100; i >= 1; --i)
    {
        hundred.push_back(i);
    }
    EXPECT_EQ(BenchStatistics::get_percentile(hundred, 99.0), 99.0);
    EXPECT_EQ(BenchStatistics::get_percentile(hundred, 100.0), 100.0);
    EXPECT_EQ(BenchStatistics::get_percentile(hundred, 50.0), 50.0);
    // With few blocks the 99th percentile is the slowest one.
    EXPECT_EQ(BenchStatistics::get_percentile({0.1, 0.7, 0.2}, 99.0), 0.7);
    EXPECT_EQ(BenchStatistics::get_percentile({}, 99.0), 0.0);
}

}  // namespace
