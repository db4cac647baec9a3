#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

struct FoundPlugin;
struct PluginResult;
struct ValidationOptions;

// "vsthost validate PLUGIN|FOLDER...": the validation suite, each check group
// in a child process of this program; exits non-zero when any check failed.
// One plug-in gets a line per check; several (or a folder) a line per
// plug-in and a total. "--json FILE" writes every check for programs.
class ValidateCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);

private:
    // A child's part: the groups named on its command line, in this process,
    // every check handed to the parent on the channel.
    static int run_child(const ValidationOptions& options, const std::string& channel);
    // Every plug-in, with a line per check for one file, else a line per file and a total.
    static std::vector<PluginResult> validate_all(const std::vector<FoundPlugin>& plugins, ValidationOptions options,
                                                  std::ostream& out);
    static void print_plugin_line(const PluginResult& result, std::ostream& out);
    static void print_total(const std::vector<PluginResult>& results, std::ostream& out);
};

}  // namespace vsthost
