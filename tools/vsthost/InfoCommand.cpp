#include "InfoCommand.h"

#include "CommandLine.h"
#include "HostedPlugin.h"
#include "PluginLibrary.h"
#include "PluginText.h"

#include "lumo/SettingMgr.h"
#include "lumo/SettingAutoload.h"

#include <stdexcept>
#include <string>

namespace vsthost
{

namespace
{

using lumo::vst2::PluginOp;

// What hosts commonly ask plug-ins about.
const char* const can_do_texts[] = {"sendVstEvents",      "sendVstMidiEvent",   "receiveVstEvents",
                                    "receiveVstMidiEvent", "receiveVstTimeInfo", "offline",
                                    "midiProgramNames",   "bypass",             "noRealTime",
                                    "plugAsChannelInsert", "plugAsSend",         "mixDryWet",
                                    "1in1out",            "1in2out",            "2in1out",
                                    "2in2out",            "2in4out",            "4in2out",
                                    "4in4out",            "8in8out"};

// The version as a number from the vendor version's hexadecimal digits (0x112: 1.12).
double decode_vendor_version(std::intptr_t version)
{
    const auto digit = [version](int shift) { return static_cast<double>((version >> shift) & 15); };
    return digit(8) + digit(4) * 0.1 + digit(0) * 0.01;
}

}  // namespace

int InfoCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {}, {});
    if (args.get_positionals().size() != 1)
    {
        throw std::invalid_argument("usage: vsthost info PLUGIN");
    }
    PluginLibrary library(args.get_positionals()[0]);
    HostedPlugin plugin(library);
    out << "plug-in:         " << library.get_path() << "\n";
    print_identity(plugin, out);
    print_programs(plugin, out);
    print_pins(plugin, out);
    out << "parameters:      " << plugin.get_num_params() << "\n";
    print_parameters(plugin, out);
    print_can_do(plugin, out);
    print_settings_file(plugin, out);
    return 0;
}

void InfoCommand::print_identity(HostedPlugin& plugin, std::ostream& out)
{
    const std::intptr_t vendor_version = plugin.dispatch(PluginOp::get_vendor_version);
    out << "effect name:     " << plugin.get_text(PluginOp::get_effect_name) << "\n"
        << "vendor:          " << plugin.get_text(PluginOp::get_vendor_string) << "\n"
        << "product:         " << plugin.get_text(PluginOp::get_product_string) << "\n"
        << "vendor version:  " << vendor_version << " (" << std::hex << "0x" << vendor_version << std::dec << ")\n"
        << "VST version:     " << plugin.dispatch(PluginOp::get_vst_version) << "\n"
        << "category:        " << describe_category(plugin.dispatch(PluginOp::get_plug_category)) << "\n"
        << "unique ID:       " << describe_unique_id(plugin.get_unique_id()) << "\n"
        << "version:         " << plugin.use_effect().version << "\n"
        << "flags:           " << describe_effect_flags(plugin.get_flags()) << "\n"
        << "initial delay:   " << plugin.use_effect().initial_delay << " frames\n"
        << "tail size:       " << plugin.dispatch(PluginOp::get_tail_size) << " frames\n";
    lumo::vst2::ERect rect{};
    if (plugin.has_editor() && plugin.get_editor_rect(rect))
    {
        out << "editor size:     " << rect.right - rect.left << " x " << rect.bottom - rect.top << "\n";
    }
}

void InfoCommand::print_programs(HostedPlugin& plugin, std::ostream& out)
{
    out << "programs:        " << plugin.get_num_programs() << " (current " << plugin.get_program() << ": \""
        << plugin.get_program_name() << "\")\n";
    for (int p = 0; p < plugin.get_num_programs(); ++p)
    {
        out << "  " << p << ": \"" << plugin.get_program_name_indexed(p) << "\"\n";
    }
}

void InfoCommand::print_pins(HostedPlugin& plugin, std::ostream& out)
{
    for (const bool output : {false, true})
    {
        const int count = output ? plugin.get_num_outputs() : plugin.get_num_inputs();
        out << (output ? "outputs:         " : "inputs:          ") << count << "\n";
        for (int pin = 0; pin < count; ++pin)
        {
            lumo::vst2::PinProperties props{};
            if (plugin.get_pin_properties(pin, output, props))
            {
                out << "  " << pin << ": \"" << props.label << "\" short \"" << props.short_label << "\" flags "
                    << describe_pin_flags(props.flags) << " arrangement " << props.arrangement_type << "\n";
            }
            else
            {
                out << "  " << pin << ": (no properties)\n";
            }
        }
    }
}

void InfoCommand::print_parameters(HostedPlugin& plugin, std::ostream& out)
{
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        out << "  " << i << ": \"" << plugin.get_param_name(i) << "\" = " << plugin.get_param(i) << " \""
            << plugin.get_param_display(i) << "\" label \"" << plugin.get_param_label(i) << "\"";
        lumo::vst2::ParameterProperties props{};
        if (plugin.get_param_properties(i, props))
        {
            out << " properties \"" << props.label << "\"/\"" << props.short_label << "\" flags "
                << describe_parameter_flags(props.flags);
            if ((props.flags & lumo::vst2::parameter_flags::uses_integer_min_max) != 0)
            {
                out << " range " << props.min_integer << ".." << props.max_integer;
            }
        }
        out << (plugin.dispatch(PluginOp::can_be_automated, i) != 0 ? "" : " (not automatable)") << "\n";
    }
}

void InfoCommand::print_can_do(HostedPlugin& plugin, std::ostream& out)
{
    out << "can do:\n";
    for (const char* text : can_do_texts)
    {
        const std::intptr_t answer = plugin.can_do(text);
        out << "  " << text << ": " << describe_can_do(answer) << " (" << answer << ")\n";
    }
}

// The plug-in's own settings manager never tells the host what its start-up
// load answered: check the file it names the same way, with the framework's
// loader, so the user sees why a hand-edited file was refused. The names are
// the plug-in's effect name and vendor, as the framework's plug-ins derive
// their settings path from them.
void InfoCommand::print_settings_file(HostedPlugin& plugin, std::ostream& out)
{
    lumo::SettingMgr mgr;
    mgr.setup(plugin.get_text(PluginOp::get_effect_name),
              decode_vendor_version(plugin.dispatch(PluginOp::get_vendor_version)),
              plugin.get_text(PluginOp::get_vendor_string));
    const lumo::SettingAutoload& autoload = *mgr.use_autoload();
    std::string path;
    out << "settings file:   ";
    if (!autoload.find_file(path))
    {
        out << "none (no autoload set in \"" << autoload.get_base_path() << "/Autoload\")\n";
        return;
    }
    out << "\"" << path << "\" ";
    try
    {
        const int code = mgr.load(path);
        out << describe_settings_result(code, mgr.get_section_name()) << " (" << code << ")\n";
    }
    catch (const std::exception& e)
    {
        out << "stops the plug-in: " << e.what() << "\n";
    }
}

}  // namespace vsthost
