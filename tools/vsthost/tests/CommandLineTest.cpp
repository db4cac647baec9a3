#include "tools/vsthost/CommandLine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using vsthost::CommandLine;

TEST(CommandLine, SeparatesPositionalsValuesAndFlags)
{
    const CommandLine args({"plug.so", "--set", "Gain=-6", "in.wav", "--set=Phase=Inverted", "--pcm16", "-o", "x.wav",
                            "--", "--odd-name.wav"},
                           {"--set", "-o"}, {"--pcm16"});
    EXPECT_EQ(args.get_positionals(), (std::vector<std::string>{"plug.so", "in.wav", "--odd-name.wav"}));
    EXPECT_EQ(args.get_values("--set"), (std::vector<std::string>{"Gain=-6", "Phase=Inverted"}));
    EXPECT_EQ(args.get_value("-o", ""), "x.wav");
    EXPECT_TRUE(args.has("--pcm16"));
    EXPECT_FALSE(args.has("--tempo"));
    EXPECT_EQ(args.get_value("--tempo", "120"), "120");
}

TEST(CommandLine, RefusesUnknownOptionsMissingValuesAndValuedFlags)
{
    EXPECT_THROW(CommandLine({"--temp", "120"}, {"--tempo"}, {}), std::invalid_argument);
    EXPECT_THROW(CommandLine({"x", "--tempo"}, {"--tempo"}, {}), std::invalid_argument);
    EXPECT_THROW(CommandLine({"--pcm16=yes"}, {}, {"--pcm16"}), std::invalid_argument);
}

TEST(CommandLine, NumbersAreCheckedForFormAndRange)
{
    const CommandLine args({"--tempo", "128.5", "--block", "0", "--rate", "44k", "--rates", "44100,48000"},
                           {"--tempo", "--block", "--rate", "--rates"}, {});
    EXPECT_EQ(args.get_number("--tempo", 120, 20, 999), 128.5);
    EXPECT_EQ(args.get_number("--length", 7, 0, 10), 7);
    EXPECT_THROW(args.get_number("--block", 512, 1, 65536), std::invalid_argument);
    EXPECT_THROW(args.get_number("--rate", 44100, 1, 1e6), std::invalid_argument);
    EXPECT_EQ(args.get_number_list("--rates", {}, 1, 1e6), (std::vector<double>{44100, 48000}));
    EXPECT_EQ(args.get_number_list("--blocks", {64}, 1, 1e6), (std::vector<double>{64}));
    EXPECT_THROW(CommandLine::parse_number("--x", "nan", -1e9, 1e9), std::invalid_argument);
}

TEST(CommandLine, SplitsAssignmentsAtTheFirstEqualsSign)
{
    std::string name;
    std::string value;
    ASSERT_TRUE(CommandLine::split_assignment("Mode=a=b", name, value));
    EXPECT_EQ(name, "Mode");
    EXPECT_EQ(value, "a=b");
    ASSERT_TRUE(CommandLine::split_assignment("Gain=", name, value));
    EXPECT_EQ(value, "");
    EXPECT_FALSE(CommandLine::split_assignment("=3", name, value));
    EXPECT_FALSE(CommandLine::split_assignment("Gain", name, value));
}

}  // namespace
