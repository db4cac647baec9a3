#include "tools/vsthost/ChildReportReader.h"
#include "tools/vsthost/ChildReportWriter.h"
#include "tools/vsthost/ValidationReport.h"

#include <gtest/gtest.h>

#include <string>

// A child's report crosses the pipe as lines; whatever a plug-in names its
// parameters, every check arrives whole.
namespace
{

using vsthost::CheckRecord;
using vsthost::ChildReportReader;
using vsthost::ChildReportWriter;
using vsthost::ValidationReport;
using vsthost::Verdict;

TEST(ChildReport, EveryCheckArrivesWholeWhateverItsTextAndHowTheBytesAreCut)
{
    std::string wire;
    ChildReportWriter writer([&](const std::string& line) { wire += line; });
    writer.on_step("parameters");
    writer.on_opened();
    const std::string odd = "tab\there, line\nend\r, back\\slash \\t, \xC3\xA9";
    writer.on_check({"ignored", odd, Verdict::fail, odd, 0.25});
    writer.on_check({"ignored", "parameter 1", Verdict::skip, "", 0.0});
    writer.on_step("closing the plug-in");

    ValidationReport report(nullptr);
    ChildReportReader reader(report, "parameters");
    // One byte at a time: the pipe may cut anywhere.
    for (const char c : wire)
    {
        reader.feed(std::string(1, c));
    }
    ASSERT_EQ(report.get_records().size(), 2u);
    const CheckRecord& first = report.get_records()[0];
    EXPECT_EQ(first.group, "parameters");
    EXPECT_EQ(first.name, odd);
    EXPECT_EQ(first.detail, odd);
    EXPECT_EQ(first.verdict, Verdict::fail);
    EXPECT_DOUBLE_EQ(first.seconds, 0.25);
    EXPECT_EQ(report.get_records()[1].verdict, Verdict::skip);
    EXPECT_EQ(report.get_failed(), 1);
    EXPECT_TRUE(reader.was_opened());
    EXPECT_FALSE(reader.is_done());
    EXPECT_EQ(reader.get_step(), "closing the plug-in");
    EXPECT_EQ(reader.get_check_in_step(), "");
}

TEST(ChildReport, ALineCutShortByADeathAndForeignLinesAreNotTaken)
{
    ValidationReport report(nullptr);
    ChildReportReader reader(report, "audio");
    reader.feed("step\taudio\ncheck\tPASS\taudio at 44100 Hz\tclean\t0.1\n");
    reader.feed("hello from a plug-in\ncheck\tMAYBE\tx\ty\t0\ncheck\tPASS\n");
    reader.feed("check\tPASS\taudio at 48000 Hz\tcle");
    ASSERT_EQ(report.get_records().size(), 1u);
    EXPECT_EQ(reader.get_step(), "audio");
    EXPECT_EQ(reader.get_check_in_step(), "audio at 44100 Hz");
    EXPECT_FALSE(reader.was_opened());
}

}  // namespace
