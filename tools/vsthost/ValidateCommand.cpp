#include "ValidateCommand.h"

#include "ChildProcess.h"
#include "ChildReportWriter.h"
#include "CommandLine.h"
#include "GroupProcess.h"
#include "ParentChannel.h"
#include "PluginFinder.h"
#include "PluginLibrary.h"
#include "PluginValidation.h"
#include "ValidationJson.h"
#include "ValidationReport.h"
#include "Validator.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage =
    "usage: vsthost validate PLUGIN|FOLDER... [--level 1|2|3] [--rates R,R...] [--blocks B,B...] [--seed N] "
    "[--repeats N] [--group NAME,NAME...] [--timeout SECONDS] [--jobs N] [--in-process] [--json FILE]";

ValidationOptions parse_options(const CommandLine& args)
{
    ValidationOptions options;
    options.level = static_cast<int>(args.get_number("--level", options.level, 1, 3));
    options.rates = args.get_number_list("--rates", options.rates, 8000, 768000);
    const std::vector<double> default_blocks(options.blocks.begin(), options.blocks.end());
    options.blocks.clear();
    for (const double b : args.get_number_list("--blocks", default_blocks, 1, 65536))
    {
        options.blocks.push_back(static_cast<int>(b));
    }
    options.seed = static_cast<unsigned>(args.get_number("--seed", options.seed, 0, 4294967295.0));
    options.repeats = static_cast<int>(args.get_number("--repeats", options.repeats, 1, 1000));
    options.timeout_seconds = args.get_number("--timeout", options.timeout_seconds, 0.1, 86400);
    options.jobs = static_cast<int>(args.get_number("--jobs", options.jobs, 1, 64));
    for (const std::string& list : args.get_values("--group"))
    {
        std::size_t start = 0;
        for (std::size_t comma = list.find(','); start <= list.size(); comma = list.find(',', start))
        {
            comma = comma == std::string::npos ? list.size() : comma;
            options.groups.push_back(list.substr(start, comma - start));
            start = comma + 1;
        }
    }
    options.in_process = args.has("--in-process");
    options.skip_non_plugins = args.has("--skip-non-plugins");
    // Before any plug-in runs: a misspelt group is the user's error, not the plug-in's.
    Validator::select_groups(options);
    return options;
}

}  // namespace

int ValidateCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    // --report-channel and --skip-non-plugins are the parent's words to a
    // child that runs a group.
    const CommandLine args(words,
                           {"--level", "--rates", "--blocks", "--seed", "--repeats", "--group", "--timeout", "--jobs",
                            "--json", "--report-channel"},
                           {"--in-process", "--skip-non-plugins"});
    if (args.get_positionals().empty())
    {
        throw std::invalid_argument(usage);
    }
    ValidationOptions options = parse_options(args);
    if (args.has("--report-channel"))
    {
        options.path = args.get_positionals().front();
        return run_child(options, args.get_value("--report-channel", ""));
    }
    const std::vector<FoundPlugin> plugins =
        PluginFinder::find(args.get_positionals(), PluginLibrary::get_file_extension());
    if (plugins.empty())
    {
        throw std::invalid_argument(std::string("no plug-in files (*") + PluginLibrary::get_file_extension()
                                    + ") in " + args.get_positionals().front());
    }
    // Opened first: a long run must not end in a file that cannot be written.
    std::ofstream json;
    const std::string json_file = args.get_value("--json", "");
    if (args.has("--json"))
    {
        json.open(json_file, std::ios::binary);
        if (!json)
        {
            throw std::runtime_error("cannot write " + json_file);
        }
    }
    const std::vector<PluginResult> results = validate_all(plugins, options, out);
    if (args.has("--json") && !ValidationJson::write(json, options, results).flush())
    {
        throw std::runtime_error("cannot write " + json_file);
    }
    const bool all_good = std::all_of(results.begin(), results.end(), [](const PluginResult& r) {
        return r.kind == PluginResult::Kind::passed || r.kind == PluginResult::Kind::not_a_plugin;
    });
    return all_good ? 0 : 1;
}

std::vector<PluginResult> ValidateCommand::validate_all(const std::vector<FoundPlugin>& plugins,
                                                        ValidationOptions options, std::ostream& out)
{
    const bool one = plugins.size() == 1 && plugins.front().named;
    out << "validating " << (one ? plugins.front().path : std::to_string(plugins.size()) + " files")
        << " at level " << options.level << ", seed " << options.seed << "\n";
    const GroupProcess runner(ChildProcess::get_own_path(), {"validate"});
    std::vector<PluginResult> results;
    for (const FoundPlugin& plugin : plugins)
    {
        options.path = plugin.path;
        options.skip_non_plugins = !plugin.named;
        ValidationReport report(one ? &out : nullptr);
        results.push_back(PluginValidation(options, runner).run(report));
        if (one)
        {
            report.print_summary();
        }
        else
        {
            print_plugin_line(results.back(), out);
        }
    }
    if (!one)
    {
        print_total(results, out);
    }
    return results;
}

int ValidateCommand::run_child(const ValidationOptions& options, const std::string& channel)
{
    ParentChannel parent(channel);
    ChildReportWriter writer([&](const std::string& line) { parent.write(line); });
    ValidationReport report(nullptr);
    report.set_listener(&writer);
    for (const std::string& group : Validator::select_groups(options))
    {
        Validator(options, report).run_group(group);
        report.step("checking the heap after the group");
        parent.end_if_heap_corrupt();
    }
    writer.on_done();
    return 0;
}

void ValidateCommand::print_plugin_line(const PluginResult& result, std::ostream& out)
{
    out << get_result_label(result.kind) << " " << result.path << ": ";
    if (result.kind == PluginResult::Kind::not_a_plugin)
    {
        out << "not a VST 2 plug-in\n";
        return;
    }
    out << result.passed << " passed, " << result.failed << " failed\n";
    // What failed, so the line needs no second run to explain.
    for (const CheckRecord& c : result.checks)
    {
        if (c.verdict == Verdict::fail)
        {
            out << "      " << c.name << (c.detail.empty() ? "" : ": ") << c.detail << "\n";
        }
    }
    out.flush();
}

void ValidateCommand::print_total(const std::vector<PluginResult>& results, std::ostream& out)
{
    const auto count = [&](PluginResult::Kind kind) {
        return std::count_if(results.begin(), results.end(), [&](const PluginResult& r) { return r.kind == kind; });
    };
    out << results.size() << " files: " << count(PluginResult::Kind::passed) << " passed, "
        << count(PluginResult::Kind::failed) << " failed, " << count(PluginResult::Kind::crashed) << " crashed, "
        << count(PluginResult::Kind::not_a_plugin) << " not plug-ins" << std::endl;
}

}  // namespace vsthost
