#pragma once

#include "GroupProcess.h"
#include "ValidationOptions.h"
#include "ValidationResult.h"

#include <string>
#include <vector>

namespace vsthost
{

class ValidationReport;

// Validates one plug-in file: every chosen check group, each in a child
// process of its own (or all in this process), into one report. Once the
// plug-in fails to load, the groups after that are not run: each would only
// fail to load it again.
class PluginValidation
{
public:
    PluginValidation(const ValidationOptions& options, const GroupProcess& runner)
        : _options(options), _runner(runner)
    {
    }

    PluginResult run(ValidationReport& report) const;

private:
    std::vector<GroupOutcome> run_in_process(const std::vector<std::string>& groups, ValidationReport& report) const;
    // Up to jobs groups' processes at once, their checks in group order.
    std::vector<GroupOutcome> run_isolated(const std::vector<std::string>& groups, ValidationReport& report) const;

    const ValidationOptions& _options;
    const GroupProcess& _runner;
};

}  // namespace vsthost
