#include "tools/vsthost/GroupProcess.h"
#include "tools/vsthost/ValidationOptions.h"
#include "tools/vsthost/ValidationReport.h"

#include <gtest/gtest.h>

#include <string>

// A shell script stands in for the child: it writes what a child would on
// the channel named by its last argument, then ends as a plug-in might make
// it end.
namespace
{

using vsthost::GroupOutcome;
using vsthost::GroupProcess;
using vsthost::ValidationOptions;
using vsthost::ValidationReport;
using vsthost::Verdict;

struct FakeChild
{
    ValidationReport report{nullptr};
    GroupOutcome outcome;

    FakeChild(const std::string& then, double timeout = 60.0)
    {
        const std::string script = "for fd; do :; done; eval \"exec 1>&$fd\"; printf 'step\\tplaying\\nopened\\n';"
                                   "printf 'check\\tPASS\\tfirst\\tfine\\t0.5\\n'; "
                                   + then;
        ValidationOptions options;
        options.timeout_seconds = timeout;
        outcome = GroupProcess("/bin/sh", {"-c", script, "sh"}).run(options, "audio", report);
    }

    std::string get_last_detail() const { return report.get_records().back().detail; }
};

TEST(GroupProcess, AChildThatFinishesHandsBackItsChecksAndNothingMore)
{
    const FakeChild run("printf 'done\\n'");
    EXPECT_EQ(run.outcome.kind, GroupOutcome::Kind::completed);
    EXPECT_TRUE(run.outcome.opened);
    ASSERT_EQ(run.report.get_records().size(), 1u);
    EXPECT_EQ(run.report.get_passed(), 1);
    EXPECT_EQ(run.report.get_records()[0].group, "audio");
    EXPECT_EQ(run.report.get_records()[0].name, "first");
}

TEST(GroupProcess, AChildThatDiesBecomesTheGroupsFailureWithTheSignalAndTheStep)
{
    const FakeChild run("printf 'step\\tthe block\\n'; kill -SEGV $$");
    EXPECT_EQ(run.outcome.kind, GroupOutcome::Kind::crashed);
    ASSERT_EQ(run.report.get_records().size(), 2u);
    EXPECT_EQ(run.report.get_records()[0].verdict, Verdict::pass);
    EXPECT_EQ(run.report.get_records()[1].name, "audio group");
    EXPECT_EQ(run.get_last_detail(), "crashed: signal 11 (SIGSEGV, segmentation fault) in step \"the block\"");
    EXPECT_EQ(run.report.get_failed(), 1);
}

TEST(GroupProcess, EndingEarlyOrDyingAfterTheGroupIsAFailureToo)
{
    const FakeChild early("exit 0");
    EXPECT_EQ(early.outcome.kind, GroupOutcome::Kind::crashed);
    EXPECT_EQ(early.get_last_detail(),
              "ended before the group was done: exit code 0 in step \"playing\", after the check \"first\"");
    const FakeChild at_exit("printf 'done\\n'; kill -ABRT $$");
    EXPECT_EQ(at_exit.outcome.kind, GroupOutcome::Kind::crashed);
    EXPECT_EQ(at_exit.get_last_detail().rfind("crashed after the group was done, at exit: signal 6 (SIGABRT", 0), 0u);
}

TEST(GroupProcess, AChildThatHangsIsKilledAtTheTimeLimit)
{
    const FakeChild run("printf 'step\\tforever\\n'; while :; do :; done", 0.3);
    EXPECT_EQ(run.outcome.kind, GroupOutcome::Kind::timed_out);
    EXPECT_EQ(run.get_last_detail(), "timed out after 0.3 s in step \"forever\"");
    EXPECT_LT(run.outcome.seconds, 5.0);
}

}  // namespace
