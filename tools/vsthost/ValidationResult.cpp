#include "ValidationResult.h"

namespace vsthost
{

const char* get_outcome_text(GroupOutcome::Kind kind)
{
    switch (kind)
    {
    case GroupOutcome::Kind::completed:
        return "completed";
    case GroupOutcome::Kind::crashed:
        return "crashed";
    case GroupOutcome::Kind::timed_out:
        return "timed out";
    case GroupOutcome::Kind::not_run:
        break;
    }
    return "not run";
}

const char* get_result_text(PluginResult::Kind kind)
{
    switch (kind)
    {
    case PluginResult::Kind::passed:
        return "pass";
    case PluginResult::Kind::failed:
        return "fail";
    case PluginResult::Kind::crashed:
        return "crash";
    case PluginResult::Kind::not_a_plugin:
        break;
    }
    return "not a plug-in";
}

const char* get_result_label(PluginResult::Kind kind)
{
    switch (kind)
    {
    case PluginResult::Kind::passed:
        return "PASS ";
    case PluginResult::Kind::failed:
        return "FAIL ";
    case PluginResult::Kind::crashed:
        return "CRASH";
    case PluginResult::Kind::not_a_plugin:
        break;
    }
    return "SKIP ";
}

}  // namespace vsthost
