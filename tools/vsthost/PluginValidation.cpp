#include "PluginValidation.h"

#include "ValidationReport.h"
#include "Validator.h"

#include <algorithm>
#include <chrono>

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
    bool loads = true;
    for (const std::string& group : Validator::select_groups(_options))
    {
        if (!loads)
        {
            result.groups.push_back({group, GroupOutcome::Kind::not_run, false, "the plug-in did not load", 0.0});
            continue;
        }
        result.groups.push_back(_options.in_process ? run_in_process(group, report)
                                                    : _runner.run(_options, group, report));
        loads = result.groups.back().opened;
    }
    result.checks = report.get_records();
    result.passed = report.get_passed();
    result.failed = report.get_failed();
    result.kind = classify(result);
    result.seconds = seconds_since(start);
    return result;
}

GroupOutcome PluginValidation::run_in_process(const std::string& group, ValidationReport& report) const
{
    const auto start = Clock::now();
    const bool opened = Validator(_options, report).run_group(group);
    return {group, GroupOutcome::Kind::completed, opened, "", seconds_since(start)};
}

}  // namespace vsthost
