#pragma once

#include "ValidationResult.h"

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

struct ValidationOptions;

// The machine-readable report of "vsthost validate --json FILE": the run's
// settings, then per plug-in its result, how each check group's run ended
// and every check with its group, name, result, detail and duration.
class ValidationJson
{
public:
    // Answers out.
    static std::ostream& write(std::ostream& out, const ValidationOptions& options,
                               const std::vector<PluginResult>& results);

    // text as a JSON string. Plug-ins hand out any bytes: a byte that is not
    // part of valid UTF-8 is taken as Latin-1, the likeliest meaning of a
    // plug-in's 8-bit text, so that the file stays valid JSON.
    static std::string quote(const std::string& text);
};

}  // namespace vsthost
