#include "tools/vsthost/GroupProcess.h"
#include "tools/vsthost/PluginValidation.h"
#include "tools/vsthost/ValidationReport.h"

#include <gtest/gtest.h>

#include <string>

// Groups' processes run side by side; a shell script stands in for each
// child, behaving by the group it is given.
namespace
{

using vsthost::GroupOutcome;
using vsthost::GroupProcess;
using vsthost::PluginResult;
using vsthost::PluginValidation;
using vsthost::ValidationOptions;
using vsthost::ValidationReport;

TEST(PluginValidation, ChecksComeInGroupOrderAndNothingAfterAGroupThatCouldNotLoad)
{
    // The first group is the slowest; the third cannot load the plug-in.
    const std::string script = R"(for a; do [ "$prev" = --group ] && group=$a; prev=$a; fd=$a; done
eval "exec 1>&$fd"
case $group in
lifecycle) sleep 0.3; printf 'opened\ncheck\tPASS\tslow\t\t0\ndone\n' ;;
programs) printf 'opened\ncheck\tPASS\tquick\t\t0\ndone\n' ;;
state) printf 'check\tFAIL\tload\tcannot load\t0\ndone\n' ;;
*) printf 'opened\ncheck\tFAIL\tlater\t\t0\ndone\n' ;;
esac)";
    ValidationOptions options;
    options.groups = {"lifecycle", "programs", "state", "parameters", "audio"};
    options.jobs = 3;
    const GroupProcess runner("/bin/sh", {"-c", script, "sh"});
    ValidationReport report(nullptr);
    const PluginResult result = PluginValidation(options, runner).run(report);
    ASSERT_EQ(report.get_records().size(), 3u);
    EXPECT_EQ(report.get_records()[0].name, "slow");
    EXPECT_EQ(report.get_records()[1].name, "quick");
    EXPECT_EQ(report.get_records()[2].name, "load");
    ASSERT_EQ(result.groups.size(), 5u);
    EXPECT_EQ(result.groups[2].kind, GroupOutcome::Kind::completed);
    EXPECT_EQ(result.groups[3].kind, GroupOutcome::Kind::not_run);
    EXPECT_EQ(result.groups[4].group, "audio");
    EXPECT_EQ(result.groups[4].kind, GroupOutcome::Kind::not_run);
    EXPECT_EQ(result.kind, PluginResult::Kind::failed);
}

}  // namespace
