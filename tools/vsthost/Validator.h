#pragma once

#include "ValidationOptions.h"
#include "ValidationReport.h"

#include <random>
#include <string>
#include <vector>

namespace vsthost
{

class AudioValidator;
class HostedPlugin;
class PluginLibrary;

// Runs the validation suite's check groups on one plug-in file and reports
// every check. Each group loads the plug-in afresh and opens its own
// instance, so that a group runs the same alone, in a process of its own or
// after the others. Where a check fails, the report says what the plug-in
// answered, so the fault can be traced to the plug-in.
class Validator
{
public:
    // The groups in the order they run, with the lowest level that runs them.
    struct Group
    {
        const char* name;
        int level;
        void (Validator::*run)(PluginLibrary& library);
    };
    static const std::vector<Group>& get_groups();
    // Null when there is no group of that name.
    static const Group* find_group(const std::string& name);
    // The names of the groups that the options choose, in order: those of the
    // level, or those named whatever their level; throws
    // std::invalid_argument for a name that is no group.
    static std::vector<std::string> select_groups(const ValidationOptions& options);

    Validator(const ValidationOptions& options, ValidationReport& report);

    // Loads the plug-in, runs the group (repeats times) and unloads it;
    // answers whether the plug-in loaded and opened.
    bool run_group(const std::string& name);

private:
    void run_lifecycle(PluginLibrary& library);
    void run_programs(PluginLibrary& library);
    void run_state(PluginLibrary& library);
    void run_parameters(PluginLibrary& library);
    void run_audio(PluginLibrary& library);
    void run_midi(PluginLibrary& library);
    void run_automation(PluginLibrary& library);
    void run_threads(PluginLibrary& library);
    void run_allocations(PluginLibrary& library);
    void run_editor(PluginLibrary& library);
    void run_oversized(PluginLibrary& library);

    // One of this class's checks, or of the audio checks, on an instance of its own.
    void run_check(PluginLibrary& library, const char* step, void (Validator::*check)(HostedPlugin&));
    void run_audio_check(PluginLibrary& library, const char* step, void (AudioValidator::*check)());
    // A fresh instance for the checks of one group; the report hears once that it opened.
    template <typename Checks>
    void with_instance(PluginLibrary& library, const Checks& checks);
    void note_opened();

    void check_lifecycle(PluginLibrary& library);
    void check_programs(HostedPlugin& plugin);
    void check_state(HostedPlugin& plugin);
    void check_chunk_restore(HostedPlugin& plugin, bool preset);
    void check_file_restore(HostedPlugin& plugin, bool bank);
    void check_parameters(HostedPlugin& plugin);
    std::string check_parameter(HostedPlugin& plugin, int index, std::string& note);
    std::string check_text_round_trip(HostedPlugin& plugin, int index, float value);
    std::string check_properties(HostedPlugin& plugin, int index);

    ValidationOptions _options;
    ValidationReport& _report;
    std::mt19937 _rng;
    bool _opened = false;
};

}  // namespace vsthost
