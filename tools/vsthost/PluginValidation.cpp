#include "PluginValidation.h"

#include "OrderedGroupReport.h"
#include "ValidationReport.h"
#include "Validator.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

namespace vsthost
{

namespace
{

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

PluginResult::Kind classify(const PluginResult& result)
{
    const bool broke = std::any_of(result.groups.begin(), result.groups.end(), [](const GroupOutcome& g) {
        return g.kind == GroupOutcome::Kind::crashed || g.kind == GroupOutcome::Kind::timed_out;
    });
    if (broke)
    {
        return PluginResult::Kind::crashed;
    }
    if (result.failed > 0)
    {
        return PluginResult::Kind::failed;
    }
    // Skipped without a failure: the library had no entry point.
    const bool opened = !result.groups.empty() && result.groups.front().opened;
    return opened || result.groups.empty() ? PluginResult::Kind::passed : PluginResult::Kind::not_a_plugin;
}

}  // namespace

PluginResult PluginValidation::run(ValidationReport& report) const
{
    const auto start = Clock::now();
    PluginResult result;
    result.path = _options.path;
    const std::vector<std::string> groups = Validator::select_groups(_options);
    result.groups = _options.in_process ? run_in_process(groups, report) : run_isolated(groups, report);
    // After a group in which the plug-in did not load, none ran: each would only fail to load it again.
    const auto first_failed = std::find_if(result.groups.begin(), result.groups.end(),
                                           [](const GroupOutcome& g) { return !g.opened; });
    for (auto g = first_failed == result.groups.end() ? first_failed : first_failed + 1; g != result.groups.end();
         ++g)
    {
        *g = {g->group, GroupOutcome::Kind::not_run, false, "the plug-in did not load", 0.0};
    }
    result.checks = report.get_records();
    result.passed = report.get_passed();
    result.failed = report.get_failed();
    result.kind = classify(result);
    result.seconds = seconds_since(start);
    return result;
}

std::vector<GroupOutcome> PluginValidation::run_in_process(const std::vector<std::string>& groups,
                                                           ValidationReport& report) const
{
    std::vector<GroupOutcome> outcomes;
    for (const std::string& group : groups)
    {
        const auto start = Clock::now();
        const bool opened = Validator(_options, report).run_group(group);
        outcomes.push_back({group, GroupOutcome::Kind::completed, opened, "", seconds_since(start)});
        if (!opened)
        {
            break;
        }
    }
    outcomes.resize(groups.size());
    for (std::size_t i = 0; i < groups.size(); ++i)
    {
        outcomes[i].group = groups[i];
    }
    return outcomes;
}

std::vector<GroupOutcome> PluginValidation::run_isolated(const std::vector<std::string>& groups,
                                                         ValidationReport& report) const
{
    std::vector<GroupOutcome> outcomes(groups.size());
    OrderedGroupReport ordered(report, groups.size());
    std::atomic<std::size_t> next{0};
    // Each worker takes the next group not yet taken and waits for its child.
    const auto work = [&] {
        for (std::size_t g = next++; g < groups.size() && ordered.is_wanted(g); g = next++)
        {
            ValidationReport own(nullptr);
            own.set_listener(&ordered.use_listener(g));
            outcomes[g] = _runner.run(_options, groups[g], own);
            ordered.finish(g, outcomes[g].opened);
        }
    };
    std::vector<std::thread> helpers;
    for (int j = 1; j < std::min<int>(_options.jobs, static_cast<int>(groups.size())); ++j)
    {
        helpers.emplace_back(work);
    }
    work();
    for (std::thread& t : helpers)
    {
        t.join();
    }
    for (std::size_t i = 0; i < groups.size(); ++i)
    {
        outcomes[i].group = groups[i];
    }
    return outcomes;
}

}  // namespace vsthost
