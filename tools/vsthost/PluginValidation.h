#pragma once

#include "GroupProcess.h"
#include "ValidationOptions.h"
#include "ValidationResult.h"

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
    GroupOutcome run_in_process(const std::string& group, ValidationReport& report) const;

    const ValidationOptions& _options;
    const GroupProcess& _runner;
};

}  // namespace vsthost
