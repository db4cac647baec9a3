#include "RenderMidi.h"

#include "BinaryFile.h"
#include "CommandLine.h"
#include "HostedPlugin.h"

#include <cmath>
#include <stdexcept>

namespace vsthost
{

namespace
{

constexpr std::uint16_t out_ticks_per_quarter = 960;

MidiFile read_midi_file(const std::string& path)
{
    const std::vector<std::uint8_t> bytes = read_binary_file(path);
    MidiFile file;
    const int result = MidiFile::read(bytes.data(), bytes.size(), file);
    if (result != 0)
    {
        throw std::runtime_error(path + ": " + MidiFile::get_error_text(result));
    }
    return file;
}

}  // namespace

RenderMidi::RenderMidi(const CommandLine& args, HostedPlugin& plugin, double rate, std::int32_t block, double tempo)
    : _plugin(plugin), _rate(rate), _out_path(args.get_value("--midi-out", ""))
{
    _out_file.tempo = TempoMap(out_ticks_per_quarter);
    _out_file.tempo.add_change(0, static_cast<std::uint32_t>(std::lround(60e6 / tempo)));
    if (args.has("--midi-in"))
    {
        const MidiFile in = read_midi_file(args.get_value("--midi-in", ""));
        _schedule = std::make_unique<MidiSchedule>(in, rate);
        _block = std::make_unique<MidiEventBlock>(_schedule->get_max_per_block(block));
        _out_file.tempo = in.tempo;
    }
    if (!_out_path.empty())
    {
        // Fails now rather than after the whole render.
        write_binary_file(_out_path, {});
    }
    if (args.has("--automation-out"))
    {
        const std::string path = args.get_value("--automation-out", "");
        _csv_file.open(path, std::ios::trunc);
        if (!_csv_file)
        {
            throw std::runtime_error("cannot write " + path);
        }
        std::vector<std::string> names;
        for (int i = 0; i < plugin.get_num_params(); ++i)
        {
            names.push_back(plugin.get_param_name(i));
        }
        _csv = std::make_unique<AutomationCsv>(_csv_file, names);
        _values.resize(names.size());
    }
}

void RenderMidi::before_block(std::uint64_t start, std::int32_t frames)
{
    if (!_schedule)
    {
        return;
    }
    _block->clear();
    _lost_in += _schedule->fill_block(start, frames, *_block);
    if (_block->get_count() > 0)
    {
        _sent_in += _block->get_count();
        _plugin.send_events(_block->use_events());
    }
}

void RenderMidi::after_block(std::uint64_t start)
{
    const MidiOutCollector& sent = _plugin.use_midi_out();
    for (std::size_t i = 0; i < sent.get_count(); ++i)
    {
        const SentMidiEvent& e = sent.get_events()[i];
        _out_file.events.push_back(MidiFileEvent{0, e.bytes});
        _out_frames.push_back(start + static_cast<std::uint64_t>(e.delta_frames));
    }
    if (_csv)
    {
        for (std::size_t i = 0; i < _values.size(); ++i)
        {
            _values[i] = _plugin.get_param(static_cast<int>(i));
        }
        _csv->add_row(start, _values);
    }
}

void RenderMidi::finish(std::ostream& out)
{
    if (_schedule)
    {
        out << "played " << _sent_in << " MIDI events into the plug-in\n";
        if (!_plugin.receives_midi())
        {
            out << "note: the plug-in does not say that it takes VST MIDI events\n";
        }
    }
    if (_lost_in > 0)
    {
        out << "warning: " << _lost_in << " MIDI events did not fit their blocks\n";
    }
    const MidiOutCollector& sent = _plugin.use_midi_out();
    if (sent.get_malformed() > 0)
    {
        out << "warning: the plug-in sent " << sent.get_malformed()
            << " malformed MIDI events, left out; the first: " << sent.describe_first_problem() << "\n";
    }
    if (sent.get_dropped() > 0)
    {
        out << "warning: " << sent.get_dropped() << " MIDI events from the plug-in did not fit a block\n";
    }
    if (_csv)
    {
        _csv_file.flush();
        if (!_csv_file)
        {
            throw std::runtime_error("cannot write the automation file");
        }
    }
    if (_out_path.empty())
    {
        return;
    }
    for (std::size_t i = 0; i < _out_frames.size(); ++i)
    {
        _out_file.events[i].tick = _out_file.tempo.get_tick(static_cast<double>(_out_frames[i]) / _rate);
    }
    write_binary_file(_out_path, _out_file.write());
    out << "wrote " << _out_file.events.size() << " MIDI events from the plug-in to " << _out_path << "\n";
}

}  // namespace vsthost
