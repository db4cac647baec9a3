#include "GroupProcess.h"

#include "ChildProcess.h"
#include "ChildReportReader.h"
#include "ValidationOptions.h"
#include "ValidationReport.h"

#include <cstdio>
#include <stdexcept>

namespace vsthost
{

namespace
{

// Numbers as text that reads back to the same value.
std::string format_number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

template <typename T>
std::string join_numbers(const std::vector<T>& values)
{
    std::string out;
    for (const T v : values)
    {
        out += (out.empty() ? "" : ",") + format_number(static_cast<double>(v));
    }
    return out;
}

// Where the child was: its last step, and the last check it finished there.
std::string describe_place(const ChildReportReader& reader)
{
    if (reader.get_step().empty())
    {
        return "";
    }
    std::string place = " in step \"" + reader.get_step() + "\"";
    if (!reader.get_check_in_step().empty())
    {
        place += ", after the check \"" + reader.get_check_in_step() + "\"";
    }
    return place;
}

// How the child ended, as the group's outcome: anything but an exit with
// code 0 after the group was done is a failure of the group.
void judge(const ChildEnd& end, const ChildReportReader& reader, double limit, GroupOutcome& outcome)
{
    const bool clean = end.kind == ChildEnd::Kind::exited && end.code == 0;
    if (end.kind == ChildEnd::Kind::killed)
    {
        char seconds[32];
        std::snprintf(seconds, sizeof seconds, "%g", limit);
        outcome.kind = GroupOutcome::Kind::timed_out;
        outcome.detail = "timed out after " + std::string(seconds) + " s" + describe_place(reader);
        return;
    }
    if (clean && reader.is_done())
    {
        return;
    }
    const char* how = "crashed: ";
    if (reader.is_done())
    {
        how = "crashed after the group was done, at exit: ";
    }
    else if (clean)
    {
        how = "ended before the group was done: ";
    }
    outcome.kind = GroupOutcome::Kind::crashed;
    outcome.detail = how + ChildProcess::describe(end) + describe_place(reader);
}

}  // namespace

std::vector<std::string> GroupProcess::get_child_args(const ValidationOptions& options, const std::string& group)
{
    std::vector<std::string> args{options.path,
                                  "--level",
                                  std::to_string(options.level),
                                  "--rates",
                                  join_numbers(options.rates),
                                  "--blocks",
                                  join_numbers(options.blocks),
                                  "--seed",
                                  std::to_string(options.seed),
                                  "--repeats",
                                  std::to_string(options.repeats),
                                  "--group",
                                  group};
    if (options.skip_non_plugins)
    {
        args.push_back("--skip-non-plugins");
    }
    args.push_back("--report-channel");
    return args;
}

GroupOutcome GroupProcess::run(const ValidationOptions& options, const std::string& group,
                               ValidationReport& report) const
{
    GroupOutcome outcome{group, GroupOutcome::Kind::completed, false, "", 0.0};
    const auto start = ChildProcess::Clock::now();
    const auto limit = std::chrono::duration<double>(options.timeout_seconds * options.repeats);
    const auto deadline = start + std::chrono::duration_cast<ChildProcess::Clock::duration>(limit);
    std::vector<std::string> args = _command;
    for (const std::string& a : get_child_args(options, group))
    {
        args.push_back(a);
    }
    ChildReportReader reader(report, group);
    report.begin_group(group);
    try
    {
        ChildProcess child(_program, args);
        std::string text;
        while (child.read(text, deadline))
        {
            reader.feed(text);
            text.clear();
            if (ChildProcess::Clock::now() >= deadline)
            {
                child.kill();
            }
        }
        judge(child.get_end(), reader, limit.count(), outcome);
    }
    catch (const std::runtime_error& e)
    {
        outcome.kind = GroupOutcome::Kind::crashed;
        outcome.detail = e.what();
    }
    outcome.opened = reader.was_opened();
    outcome.seconds = std::chrono::duration<double>(ChildProcess::Clock::now() - start).count();
    if (outcome.kind != GroupOutcome::Kind::completed)
    {
        report.fail(group + " group", outcome.detail);
    }
    return outcome;
}

}  // namespace vsthost
