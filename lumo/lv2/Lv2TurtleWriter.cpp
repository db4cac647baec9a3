#include "lumo/lv2/Lv2TurtleWriter.h"

#include "lumo/DspInterface.h"
#include "lumo/SettingKeys.h"
#include "lumo/lv2/Lv2ControlPort.h"
#include "lumo/lv2/Lv2Plugin.h"
#include "lumo/lv2/Lv2PluginRecipe.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace lumo
{
namespace
{

const char* const prefixes =
    "@prefix atom:  <http://lv2plug.in/ns/ext/atom#> .\n"
    "@prefix doap:  <http://usefulinc.com/ns/doap#> .\n"
    "@prefix foaf:  <http://xmlns.com/foaf/0.1/> .\n"
    "@prefix log:   <http://lv2plug.in/ns/ext/log#> .\n"
    "@prefix lv2:   <http://lv2plug.in/ns/lv2core#> .\n"
    "@prefix midi:  <http://lv2plug.in/ns/ext/midi#> .\n"
    "@prefix rdf:   <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .\n"
    "@prefix rdfs:  <http://www.w3.org/2000/01/rdf-schema#> .\n"
    "@prefix state: <http://lv2plug.in/ns/ext/state#> .\n"
    "@prefix time:  <http://lv2plug.in/ns/ext/time#> .\n"
    "@prefix ui:    <http://lv2plug.in/ns/extensions/ui#> .\n"
    "@prefix units: <http://lv2plug.in/ns/extensions/units#> .\n"
    "@prefix urid:  <http://lv2plug.in/ns/ext/urid#> .\n\n";

std::string quoted(const std::string& text)
{
    std::string out = "\"";
    for (const char c : text)
    {
        if (c == '"' || c == '\\')
        {
            out += '\\';
        }
        out += c;
    }
    return out + "\"";
}

// A decimal literal that reads back as the same float: Turtle takes a number
// with a point as a decimal, which is what the LV2 tools expect.
std::string number(float value)
{
    char text[64];
    for (int digits = 1; digits < 40; ++digits)
    {
        std::snprintf(text, sizeof(text), "%.*f", digits, static_cast<double>(value));
        if (std::strtof(text, nullptr) == value)
        {
            break;
        }
    }
    return text;
}

std::string plugin_text(Lv2Plugin& plugin, const char* key)
{
    return plugin.use_dsp().get_setting_str(key);
}

}  // namespace

Lv2TurtleWriter::Lv2TurtleWriter(const Lv2PluginRecipe& recipe, Lv2Plugin& plugin, std::string binary,
                                 std::string description, Ui ui)
    : _recipe(recipe), _plugin(plugin), _binary(std::move(binary)), _description(std::move(description)),
      _ui(std::move(ui))
{
}

std::string Lv2TurtleWriter::write_manifest() const
{
    std::string out = std::string("@prefix lv2:  <http://lv2plug.in/ns/lv2core#> .\n"
                                  "@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .\n"
                                  "@prefix ui:   <http://lv2plug.in/ns/extensions/ui#> .\n\n")
                    + "<" + _recipe.uri + ">\n"
                    + "    a lv2:Plugin ;\n"
                    + "    lv2:binary <" + _binary + "> ;\n"
                    + "    rdfs:seeAlso <" + _description + "> .\n";
    if (!_ui.uri.empty())
    {
        out += "\n<" + _ui.uri + ">\n    a ui:X11UI ;\n    lv2:binary <" + _ui.binary + "> ;\n    rdfs:seeAlso <"
             + _description + "> .\n";
    }
    return out;
}

std::string Lv2TurtleWriter::write_description() const
{
    // Version 1.12 is minor version 12: an even minor version marks a release.
    const double version = _plugin.use_dsp().get_setting_num(setting_key::plugin_version);
    const long minor = std::lround(version * 100.0) % 100;
    std::string out = prefixes;
    out += std::string("<") + _recipe.uri + ">\n    a lv2:Plugin";
    if (_recipe.plugin_class != nullptr)
    {
        out += std::string(", ") + _recipe.plugin_class;
    }
    const std::string name = quoted(plugin_text(_plugin, setting_key::plugin_name));
    out += " ;\n    doap:name " + name + " ;\n    lv2:project <" + _recipe.uri + "#project> ;\n";
    if (_recipe.comment != nullptr)
    {
        out += std::string("    rdfs:comment ") + quoted(_recipe.comment) + " ;\n";
    }
    out += "    lv2:minorVersion " + std::to_string(minor) + " ;\n    lv2:microVersion 0 ;\n";
    // Nothing is required: hosts that offer no map still run the audio.
    out += "    lv2:optionalFeature lv2:hardRTCapable, urid:map, log:log ;\n";
    out += "    lv2:extensionData state:interface ;\n";
    if (!_ui.uri.empty())
    {
        out += "    ui:ui <" + _ui.uri + "> ;\n";
    }
    write_ports(out);
    // The maintainer belongs to the project, which hosts show as the author.
    out += std::string("\n<") + _recipe.uri + "#project>\n    a doap:Project ;\n    doap:name " + name
         + " ;\n    doap:maintainer [ a foaf:Person ; foaf:name "
         + quoted(plugin_text(_plugin, setting_key::manufacturer)) + " ] .\n";
    write_ui(out);
    return out;
}

void Lv2TurtleWriter::write_ports(std::string& out) const
{
    const Lv2PortLayout& layout = _plugin.use_layout();
    std::string sep = "    lv2:port ";
    const auto begin = [&out, &sep](const char* types, std::uint32_t index, const std::string& symbol,
                                    const std::string& name) {
        out += sep + "[\n        a " + types + " ;\n        lv2:index " + std::to_string(index)
             + " ;\n        lv2:symbol " + quoted(symbol) + " ;\n        lv2:name " + quoted(name);
        sep = " , ";
    };
    for (int c = 0; c < layout.get_nbr_inputs(); ++c)
    {
        const std::string& name = layout.get_input_name(c);
        begin("lv2:AudioPort, lv2:InputPort", layout.get_first_input() + static_cast<std::uint32_t>(c),
              Lv2ControlPort::make_symbol(name), name);
        out += "\n    ]";
    }
    for (int c = 0; c < layout.get_nbr_outputs(); ++c)
    {
        const std::string& name = layout.get_output_name(c);
        begin("lv2:AudioPort, lv2:OutputPort", layout.get_first_output() + static_cast<std::uint32_t>(c),
              Lv2ControlPort::make_symbol(name), name);
        out += "\n    ]";
    }
    for (int i = 0; i < layout.get_nbr_controls(); ++i)
    {
        const Lv2ControlPort& port = _plugin.use_control(i);
        begin("lv2:ControlPort, lv2:InputPort", layout.get_first_control() + static_cast<std::uint32_t>(i),
              port.get_symbol(), port.get_name());
        write_control(out, i);
        out += "\n    ]";
    }
    // MIDI and the host's transport in, MIDI out, and the editor's learn
    // messages both ways: both may stay unconnected.
    begin("atom:AtomPort, lv2:InputPort", layout.get_atom_in(), "control", "Control");
    out += " ;\n        atom:bufferType atom:Sequence ;\n"
           "        atom:supports atom:Object, midi:MidiEvent, time:Position ;\n"
           "        lv2:designation lv2:control ;\n        lv2:portProperty lv2:connectionOptional\n    ]";
    begin("atom:AtomPort, lv2:OutputPort", layout.get_atom_out(), "notify", "Notify");
    out += " ;\n        atom:bufferType atom:Sequence ;\n        atom:supports atom:Object, midi:MidiEvent ;\n"
           "        lv2:designation lv2:control ;\n        lv2:portProperty lv2:connectionOptional\n    ] .\n";
}

void Lv2TurtleWriter::write_control(std::string& out, int index) const
{
    const Lv2ControlPort& port = _plugin.use_control(index);
    out += " ;\n        lv2:default " + number(port.get_default()) + " ;\n        lv2:minimum "
         + number(port.get_minimum()) + " ;\n        lv2:maximum " + number(port.get_maximum());
    if (port.get_unit_uri() != nullptr)
    {
        out += std::string(" ;\n        units:unit <") + port.get_unit_uri() + ">";
    }
    if (port.is_integer())
    {
        out += port.is_toggle() ? " ;\n        lv2:portProperty lv2:integer, lv2:toggled"
                                : " ;\n        lv2:portProperty lv2:integer";
    }
    std::string sep = " ;\n        lv2:scalePoint ";
    for (const Lv2ControlPort::Label& label : port.get_labels())
    {
        out += sep + "[ rdfs:label " + quoted(label.text) + " ; rdf:value " + number(label.value) + " ]";
        sep = " , ";
    }
}

// The editor lives in the host's window and on its idle calls; it sizes
// itself once, by the user's zoom, and hears of the learned MIDI bindings on
// the notify port.
void Lv2TurtleWriter::write_ui(std::string& out) const
{
    if (_ui.uri.empty())
    {
        return;
    }
    out += "\n<" + _ui.uri + ">\n    a ui:X11UI ;\n"
         + "    lv2:requiredFeature ui:idleInterface, ui:parent ;\n"
         + "    lv2:optionalFeature log:log, ui:noUserResize, ui:resize, ui:touch, urid:map ;\n"
         + "    lv2:extensionData ui:idleInterface ;\n"
         + "    ui:portNotification [\n        ui:plugin <" + _recipe.uri + "> ;\n        ui:portIndex "
         + std::to_string(_plugin.use_layout().get_atom_out())
         + " ;\n        ui:protocol atom:eventTransfer\n    ] .\n";
}

}  // namespace lumo
