#include "MidiOutCollector.h"

#include "MidiFile.h"

#include <sstream>

namespace vsthost
{

namespace
{

// Hosts and plug-ins disagree whether a MIDI event's size counts the whole
// record or what follows its first two fields; both are seen in the wild.
bool is_midi_byte_size(std::int32_t size)
{
    return size == static_cast<std::int32_t>(sizeof(lumo::vst2::MidiEvent))
           || size == static_cast<std::int32_t>(sizeof(lumo::vst2::MidiEvent) - 8);
}

}  // namespace

MidiOutCollector::MidiOutCollector() : _events(capacity) {}

void MidiOutCollector::begin_block(std::int32_t frames)
{
    _frames = frames;
    _count = 0;
}

std::intptr_t MidiOutCollector::take(const lumo::vst2::Events* events)
{
    if (events == nullptr)
    {
        note(Problem::null_block, 0);
        return 0;
    }
    if (events->num_events < 0 || events->num_events > max_plausible_count)
    {
        note(Problem::bad_count, events->num_events);
        return 0;
    }
    for (std::int32_t i = 0; i < events->num_events; ++i)
    {
        take_event(events->events[i]);
    }
    return 1;
}

void MidiOutCollector::take_event(const lumo::vst2::Event* event)
{
    ++_total;
    if (event == nullptr)
    {
        note(Problem::null_event, 0);
        return;
    }
    if (event->delta_frames < 0 || event->delta_frames >= _frames)
    {
        note(Problem::delta_outside_block, event->delta_frames);
        return;
    }
    if (event->type == lumo::vst2::event_types::sysex)
    {
        const auto* sysex = reinterpret_cast<const lumo::vst2::MidiSysexEvent*>(event);
        if (sysex->dump_bytes < 0 || (sysex->dump_bytes > 0 && sysex->sysex_dump == nullptr))
        {
            note(Problem::bad_sysex, sysex->dump_bytes);
        }
        return;  // well formed, but nothing a file of channel messages keeps
    }
    if (event->type != lumo::vst2::event_types::midi)
    {
        note(Problem::unknown_type, event->type);
        return;
    }
    const auto& midi = *reinterpret_cast<const lumo::vst2::MidiEvent*>(event);
    const Problem problem = check_midi(midi);
    if (problem != Problem::none)
    {
        note(problem,
             problem == Problem::bad_byte_size ? midi.byte_size : static_cast<unsigned char>(midi.midi_data[0]));
        return;
    }
    if (MidiFile::get_message_size(static_cast<std::uint8_t>(midi.midi_data[0])) == 0)
    {
        return;  // a system message: well formed, but no channel message to keep
    }
    if (_count == _events.size())
    {
        ++_dropped;
        return;
    }
    SentMidiEvent& out = _events[_count++];
    out.delta_frames = midi.delta_frames;
    for (std::size_t b = 0; b < out.bytes.size(); ++b)
    {
        out.bytes[b] = static_cast<std::uint8_t>(midi.midi_data[b]);
    }
}

MidiOutCollector::Problem MidiOutCollector::check_midi(const lumo::vst2::MidiEvent& e) const
{
    if (!is_midi_byte_size(e.byte_size))
    {
        return Problem::bad_byte_size;
    }
    const auto status = static_cast<std::uint8_t>(e.midi_data[0]);
    // SysEx travels in its own kind of event; system common and real-time
    // messages may come as MIDI events.
    if (status < 0x80 || status == 0xF0 || status == 0xF7)
    {
        return Problem::bad_status;
    }
    const int size = MidiFile::get_message_size(status);
    for (int b = 1; b < size; ++b)
    {
        if (static_cast<std::uint8_t>(e.midi_data[b]) >= 0x80)
        {
            return Problem::bad_data;
        }
    }
    return Problem::none;
}

void MidiOutCollector::note(Problem problem, std::int32_t value)
{
    ++_malformed;
    if (_first_problem == Problem::none)
    {
        _first_problem = problem;
        _first_problem_value = value;
    }
}

std::string MidiOutCollector::describe_first_problem() const
{
    std::ostringstream s;
    switch (_first_problem)
    {
    case Problem::none:
        return {};
    case Problem::null_block:
        s << "a null events block";
        break;
    case Problem::bad_count:
        s << "an events block with count " << _first_problem_value;
        break;
    case Problem::null_event:
        s << "a null event pointer";
        break;
    case Problem::unknown_type:
        s << "an event of unknown type " << _first_problem_value;
        break;
    case Problem::bad_byte_size:
        s << "a MIDI event with byte size " << _first_problem_value;
        break;
    case Problem::delta_outside_block:
        s << "deltaFrames " << _first_problem_value << " outside its block";
        break;
    case Problem::bad_status:
        s << "a MIDI event with status byte 0x" << std::hex << _first_problem_value
          << " (no status, or SysEx in a MIDI event)";
        break;
    case Problem::bad_data:
        s << "a MIDI event with status 0x" << std::hex << _first_problem_value << " and a data byte of 0x80 or more";
        break;
    case Problem::bad_sysex:
        s << "a SysEx event of " << _first_problem_value << " bytes without data";
        break;
    }
    return s.str();
}

}  // namespace vsthost
