#include "Validator.h"

#include "AudioValidator.h"
#include "EditorValidator.h"
#include "FxExchange.h"
#include "HostedPlugin.h"
#include "MidiValidator.h"
#include "ParamState.h"
#include "PluginLibrary.h"
#include "PluginText.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>

namespace vsthost
{

namespace
{

using lumo::vst2::PluginOp;

constexpr double restore_tolerance = 1e-6;
constexpr int lifecycle_rounds = 2;

// What must not change between two instances of the same plug-in.
struct Identity
{
    std::int32_t unique_id = 0;
    std::string name;
    std::string vendor;
    std::string product;
    int params = 0;
    int programs = 0;
    int inputs = 0;
    int outputs = 0;
    std::int32_t flags = 0;

    explicit Identity(HostedPlugin& p)
        : unique_id(p.get_unique_id()),
          name(p.get_text(PluginOp::get_effect_name)),
          vendor(p.get_text(PluginOp::get_vendor_string)),
          product(p.get_text(PluginOp::get_product_string)),
          params(p.get_num_params()),
          programs(p.get_num_programs()),
          inputs(p.get_num_inputs()),
          outputs(p.get_num_outputs()),
          flags(p.get_flags())
    {
    }

    std::string describe() const
    {
        std::ostringstream s;
        s << describe_unique_id(unique_id) << " \"" << name << "\" by \"" << vendor << "\", " << params
          << " parameters, " << programs << " programs, " << inputs << " in, " << outputs << " out, flags "
          << describe_effect_flags(flags);
        return s.str();
    }
};

// A display that is a number and nothing else (units are separate labels).
bool parse_display_number(const std::string& text, double& out)
{
    char* end = nullptr;
    out = std::strtod(text.c_str(), &end);
    while (end != nullptr && *end == ' ')
    {
        ++end;
    }
    return !text.empty() && end != text.c_str() && *end == 0 && std::isfinite(out);
}

}  // namespace

const std::vector<Validator::Group>& Validator::get_groups()
{
    static const std::vector<Group> groups = {
        {"lifecycle", 1, &Validator::run_lifecycle},
        {"programs", 1, &Validator::run_programs},
        {"state", 1, &Validator::run_state},
        {"parameters", 1, &Validator::run_parameters},
        {"audio", 1, &Validator::run_audio},
        {"midi", 1, &Validator::run_midi},
        {"automation", 2, &Validator::run_automation},
        {"threads", 2, &Validator::run_threads},
        {"allocations", 2, &Validator::run_allocations},
        {"editor", 2, &Validator::run_editor},
        // Last: blocks beyond the announced size break the interface's
        // contract, and a plug-in that trusts it may corrupt its memory here.
        {"oversized", 2, &Validator::run_oversized},
    };
    return groups;
}

const Validator::Group* Validator::find_group(const std::string& name)
{
    const auto& all = get_groups();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Group& g) { return name == g.name; });
    return found != all.end() ? &*found : nullptr;
}

std::vector<std::string> Validator::select_groups(const ValidationOptions& options)
{
    for (const std::string& name : options.groups)
    {
        if (find_group(name) == nullptr)
        {
            std::string known;
            for (const Group& g : get_groups())
            {
                known += std::string(known.empty() ? "" : ", ") + g.name;
            }
            throw std::invalid_argument("no check group \"" + name + "\" (groups: " + known + ")");
        }
    }
    std::vector<std::string> chosen;
    for (const Group& g : get_groups())
    {
        const bool named = std::find(options.groups.begin(), options.groups.end(), g.name) != options.groups.end();
        // A group named on the command line runs whatever the level, which
        // still sets how much work it does.
        if (options.groups.empty() ? g.level <= options.level : named)
        {
            chosen.emplace_back(g.name);
        }
    }
    return chosen;
}

Validator::Validator(const ValidationOptions& options, ValidationReport& report)
    : _options(options), _report(report), _rng(options.seed)
{
}

bool Validator::run_group(const std::string& name)
{
    const Group* group = find_group(name);
    if (group == nullptr)
    {
        throw std::invalid_argument("no check group \"" + name + "\"");
    }
    _report.begin_group(name);
    _opened = false;
    try
    {
        _report.step("loading the plug-in");
        PluginLibrary library(_options.path);
        for (int r = 0; r < _options.repeats; ++r)
        {
            // Each group draws the same values whichever groups ran before it.
            _rng.seed(_options.seed + static_cast<unsigned>(r));
            (this->*group->run)(library);
        }
        _report.step("unloading the plug-in");
    }
    catch (const NotAPluginError& e)
    {
        if (_options.skip_non_plugins)
        {
            _report.skip("load", e.what());
        }
        else
        {
            _report.fail("load", e.what());
        }
    }
    catch (const std::exception& e)
    {
        // A plug-in that loaded and then threw stops only this group.
        _report.fail(_opened ? name + " group" : "load", (_opened ? "stopped: " : "") + std::string(e.what()));
    }
    return _opened;
}

template <typename Checks>
void Validator::with_instance(PluginLibrary& library, const Checks& checks)
{
    _report.step("opening the plug-in");
    HostedPlugin plugin(library);
    note_opened();
    checks(plugin);
    _report.step("closing the plug-in");
}

void Validator::note_opened()
{
    if (!_opened)
    {
        _opened = true;
        _report.opened();
    }
}

void Validator::run_lifecycle(PluginLibrary& library)
{
    _report.step("opening and closing instances");
    check_lifecycle(library);
}

void Validator::run_check(PluginLibrary& library, const char* step, void (Validator::*check)(HostedPlugin&))
{
    with_instance(library, [&](HostedPlugin& plugin) {
        _report.step(step);
        (this->*check)(plugin);
    });
}

void Validator::run_programs(PluginLibrary& library)
{
    run_check(library, "programs", &Validator::check_programs);
}

void Validator::run_state(PluginLibrary& library)
{
    run_check(library, "state", &Validator::check_state);
}

void Validator::run_parameters(PluginLibrary& library)
{
    run_check(library, "parameters", &Validator::check_parameters);
}

void Validator::run_audio(PluginLibrary& library)
{
    with_instance(library, [&](HostedPlugin& plugin) {
        AudioValidator audio(plugin, _options, _report, _rng);
        _report.step("audio at every rate and block size");
        audio.check_rates_and_blocks();
        if (_options.level >= 2)
        {
            _report.step("rate and block changes while resumed");
            audio.check_changes_while_resumed();
        }
    });
}

void Validator::run_midi(PluginLibrary& library)
{
    with_instance(library, [&](HostedPlugin& plugin) {
        AudioValidator audio(plugin, _options, _report, _rng);
        MidiValidator midi(plugin, audio, _options, _report, _rng);
        _report.step("MIDI input");
        midi.check_input();
        // Whatever the plug-in sent meanwhile.
        midi.check_output();
    });
}

void Validator::run_audio_check(PluginLibrary& library, const char* step, void (AudioValidator::*check)())
{
    with_instance(library, [&](HostedPlugin& plugin) {
        _report.step(step);
        (AudioValidator(plugin, _options, _report, _rng).*check)();
    });
}

void Validator::run_automation(PluginLibrary& library)
{
    run_audio_check(library, "automation", &AudioValidator::check_automation);
}

void Validator::run_threads(PluginLibrary& library)
{
    run_audio_check(library, "parameters and chunks from other threads", &AudioValidator::check_threads);
}

void Validator::run_allocations(PluginLibrary& library)
{
    run_audio_check(library, "allocations while processing", &AudioValidator::check_allocations);
}

void Validator::run_editor(PluginLibrary& library)
{
    with_instance(library, [&](HostedPlugin& plugin) {
        AudioValidator audio(plugin, _options, _report, _rng);
        EditorValidator editor(plugin, audio, _report);
        _report.step("editor open and close");
        editor.check_editor();
        if (_options.level >= 3)
        {
            _report.step("editor leaks");
            editor.check_editor_leaks(library, _options.scaled(2));
        }
    });
}

void Validator::run_oversized(PluginLibrary& library)
{
    run_audio_check(library, "blocks larger than announced", &AudioValidator::check_oversized_blocks);
}

void Validator::check_lifecycle(PluginLibrary& warm)
{
    std::string reference;
    for (int round = 1; round <= lifecycle_rounds; ++round)
    {
        for (const bool cold : {true, false})
        {
            // Cold: the binary is loaded anew; warm: another instance from the loaded one.
            std::unique_ptr<PluginLibrary> fresh = cold ? std::make_unique<PluginLibrary>(_options.path) : nullptr;
            std::string seen;
            {
                HostedPlugin plugin(cold ? *fresh : warm);
                note_opened();
                seen = Identity(plugin).describe();
                plugin.set_sample_rate(_options.rates.front());
                plugin.resume();
                plugin.suspend();
            }
            if (reference.empty())
            {
                reference = seen;
            }
            const std::string check =
                std::string("open and close, ") + (cold ? "cold" : "warm") + ", round " + std::to_string(round);
            _report.expect(seen == reference, check, seen == reference ? seen : seen + "; first was " + reference);
        }
    }
}

void Validator::check_programs(HostedPlugin& plugin)
{
    const int count = plugin.get_num_programs();
    if (count <= 0)
    {
        _report.skip("programs", "the plug-in has no programs");
        return;
    }
    const int current = plugin.get_program();
    const std::vector<float> before = ParamState::capture(plugin);
    std::string fault;
    std::string names;
    for (int p = 0; p < count && fault.empty(); ++p)
    {
        plugin.set_program(p);
        const std::string name = plugin.get_program_name();
        const std::string indexed = plugin.get_program_name_indexed(p);
        names += (p == 0 ? "\"" : ", \"") + name + "\"";
        if (plugin.get_program() != p)
        {
            fault = "program " + std::to_string(p) + " was set but " + std::to_string(plugin.get_program())
                    + " is current";
        }
        else if (!indexed.empty() && indexed != name)
        {
            fault = "program " + std::to_string(p) + " is \"" + name + "\" but its indexed name is \"" + indexed + "\"";
        }
    }
    plugin.set_program(current);
    if (fault.empty() && plugin.get_program() != current)
    {
        fault = "switching back to program " + std::to_string(current) + " failed";
    }
    if (fault.empty())
    {
        fault = ParamState::find_difference(plugin, before, restore_tolerance);
        fault = fault.empty() ? fault : "after switching back: " + fault;
    }
    _report.expect(fault.empty(), "programs: names, switching and back", fault.empty() ? names : fault);
}

void Validator::check_state(HostedPlugin& plugin)
{
    if (plugin.has_flag(lumo::vst2::effect_flags::program_chunks))
    {
        check_chunk_restore(plugin, false);
        check_chunk_restore(plugin, true);
    }
    else
    {
        _report.skip("state through chunks", "the plug-in stores its state through parameters");
    }
    check_file_restore(plugin, false);
    check_file_restore(plugin, true);
}

void Validator::check_chunk_restore(HostedPlugin& plugin, bool preset)
{
    const std::string check = preset ? "state: preset chunk restores every value" : "state: bank chunk restores every value";
    ParamState::randomize(plugin, _rng);
    const std::vector<float> saved = ParamState::capture(plugin);
    const std::vector<std::string> displays = ParamState::capture_displays(plugin);
    const std::vector<std::uint8_t> chunk = plugin.get_chunk(preset);
    if (chunk.empty())
    {
        _report.fail(check, "the plug-in declares chunks but gave an empty one");
        return;
    }
    ParamState::randomize(plugin, _rng);
    if (!plugin.set_chunk(chunk, preset))
    {
        _report.fail(check, "the plug-in refused its own chunk of " + std::to_string(chunk.size()) + " bytes");
        return;
    }
    const std::string fault = ParamState::find_difference(plugin, saved, displays, restore_tolerance);
    _report.expect(fault.empty(), check, fault.empty() ? std::to_string(chunk.size()) + " bytes" : fault);
}

void Validator::check_file_restore(HostedPlugin& plugin, bool bank)
{
    const std::string check = bank ? "state: .fxb file restores every value" : "state: .fxp file restores every value";
    ParamState::randomize(plugin, _rng);
    const std::vector<float> saved = ParamState::capture(plugin);
    const std::vector<std::string> displays = ParamState::capture_displays(plugin);
    const std::vector<std::uint8_t> bytes = FxExchange::capture(plugin, bank).write();
    FxFile file;
    const int read = FxFile::read(bytes.data(), bytes.size(), file);
    ParamState::randomize(plugin, _rng);
    const int applied = read != 0 ? read : FxExchange::apply(plugin, file);
    if (applied != 0)
    {
        _report.fail(check, FxExchange::get_error_text(applied));
        return;
    }
    const std::string fault = ParamState::find_difference(plugin, saved, displays, restore_tolerance);
    _report.expect(fault.empty(), check, fault.empty() ? std::to_string(bytes.size()) + " bytes" : fault);
}

void Validator::check_parameters(HostedPlugin& plugin)
{
    const std::vector<float> before = ParamState::capture(plugin);
    for (int i = 0; i < plugin.get_num_params(); ++i)
    {
        std::string note;
        const std::string fault = check_parameter(plugin, i, note);
        const std::string check = "parameter " + std::to_string(i) + " \"" + plugin.get_param_name(i) + "\"";
        _report.expect(fault.empty(), check, fault.empty() ? note : fault);
    }
    ParamState::apply(plugin, before);
}

std::string Validator::check_parameter(HostedPlugin& plugin, int index, std::string& note)
{
    if (plugin.get_param_name(index).empty())
    {
        return "empty name";
    }
    std::vector<float> values = {0.0f, 0.5f, 1.0f};
    std::uniform_real_distribution<float> any(0.0f, 1.0f);
    for (int r = 0; r < _options.scaled(2); ++r)
    {
        values.push_back(any(_rng));
    }
    int parsed = 0;
    for (const float v : values)
    {
        plugin.set_param(index, v);
        const float back = plugin.get_param(index);
        if (!(back >= 0.0f && back <= 1.0f))
        {
            return "set to " + std::to_string(v) + ", it reads " + std::to_string(back) + ", outside 0 to 1";
        }
        const std::string fault = check_text_round_trip(plugin, index, v);
        if (fault == "unparsed")
        {
            continue;
        }
        if (!fault.empty())
        {
            if (_options.level >= 3)
            {
                return fault;
            }
            note = "note: " + fault;
        }
        ++parsed;
    }
    const std::string props = check_properties(plugin, index);
    if (!props.empty())
    {
        return props;
    }
    plugin.set_param(index, 0.0f);
    const std::string low = plugin.get_param_display(index);
    plugin.set_param(index, 1.0f);
    const std::string high = plugin.get_param_display(index);
    const std::string shown = "\"" + low + "\" to \"" + high + "\" " + plugin.get_param_label(index)
                              + (parsed > 0 ? ", text round trip" : ", no text parsing");
    note = shown + (note.empty() ? "" : "; " + note);
    return {};
}

std::string Validator::check_text_round_trip(HostedPlugin& plugin, int index, float value)
{
    plugin.set_param(index, value);
    const std::string display = plugin.get_param_display(index);
    const float before = plugin.get_param(index);
    if (!plugin.set_param_text(index, display))
    {
        plugin.set_param(index, before);
        return "unparsed";
    }
    const std::string again = plugin.get_param_display(index);
    if (again != display)
    {
        return "the text \"" + display + "\" (value " + std::to_string(before) + ") comes back as \"" + again
               + "\" (value " + std::to_string(plugin.get_param(index)) + ")";
    }
    return {};
}

std::string Validator::check_properties(HostedPlugin& plugin, int index)
{
    lumo::vst2::ParameterProperties props{};
    if (!plugin.get_param_properties(index, props))
    {
        return {};
    }
    namespace flags = lumo::vst2::parameter_flags;
    plugin.set_param(index, 0.0f);
    const std::string low = plugin.get_param_display(index);
    plugin.set_param(index, 1.0f);
    const std::string high = plugin.get_param_display(index);
    if ((props.flags & flags::is_switch) != 0 && low == high)
    {
        return "a switch that shows \"" + low + "\" both off and on";
    }
    if ((props.flags & flags::uses_integer_min_max) == 0)
    {
        return {};
    }
    if (props.min_integer > props.max_integer)
    {
        return "integer range " + std::to_string(props.min_integer) + ".." + std::to_string(props.max_integer)
               + " is upside down";
    }
    double lo = 0.0;
    double hi = 0.0;
    if (parse_display_number(low, lo) && parse_display_number(high, hi)
        && (std::fabs(lo - props.min_integer) > 0.5 || std::fabs(hi - props.max_integer) > 0.5))
    {
        return "integer range " + std::to_string(props.min_integer) + ".." + std::to_string(props.max_integer)
               + " but the display goes from \"" + low + "\" to \"" + high + "\"";
    }
    return {};
}

}  // namespace vsthost
