#pragma once

#include "ValidationReport.h"

#include <string>
#include <vector>

namespace vsthost
{

// How one check group's run ended.
struct GroupOutcome
{
    enum class Kind
    {
        completed,  // every check of the group reported; failures are in the checks
        crashed,    // its process died or ended before the group was done
        timed_out,  // its process was killed after the time limit
        not_run,    // the plug-in did not load in an earlier group
    };
    std::string group;
    Kind kind = Kind::completed;
    // Whether the plug-in loaded and its first instance opened.
    bool opened = false;
    // How the process ended and where, for the kinds other than completed.
    std::string detail;
    double seconds = 0.0;
};

// "completed", "crashed", "timed out", "not run".
const char* get_outcome_text(GroupOutcome::Kind kind);

// Everything the validator found about one plug-in file.
struct PluginResult
{
    enum class Kind
    {
        passed,
        failed,
        crashed,       // some group crashed or hung
        not_a_plugin,  // a library in a searched folder with no VST 2 entry point
    };
    std::string path;
    Kind kind = Kind::passed;
    std::vector<GroupOutcome> groups;
    std::vector<CheckRecord> checks;
    int passed = 0;
    int failed = 0;
    double seconds = 0.0;
};

// As the JSON report gives it: "pass", "fail", "crash", "not a plug-in".
const char* get_result_text(PluginResult::Kind kind);
// As a plug-in's line starts: "PASS ", "FAIL ", "CRASH", "SKIP ".
const char* get_result_label(PluginResult::Kind kind);

}  // namespace vsthost
