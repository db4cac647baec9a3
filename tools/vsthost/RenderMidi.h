#pragma once

#include "AutomationCsv.h"
#include "MidiEventBlock.h"
#include "MidiFile.h"
#include "MidiSchedule.h"

#include <cstdint>
#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

class CommandLine;
class HostedPlugin;

// The MIDI side of a render: a MIDI file played into the plug-in at exact
// sample offsets (--midi-in), the MIDI the plug-in sends written to a file
// (--midi-out) and every parameter's value at every block (--automation-out).
// Each part is there only when its option is given.
class RenderMidi
{
public:
    // Opens and reads every file the options name; throws on any failure,
    // before a single block is rendered.
    RenderMidi(const CommandLine& args, HostedPlugin& plugin, double rate, std::int32_t block, double tempo);

    // One past the last incoming event's frame: a render without a length
    // runs at least this long.
    std::uint64_t get_end_frame() const { return _schedule ? _schedule->get_end_frame() : 0; }

    // Hands the block's incoming events to the plug-in.
    void before_block(std::uint64_t start, std::int32_t frames);
    // Takes what the plug-in sent and the parameter values.
    void after_block(std::uint64_t start);
    // Writes the MIDI output file and says what was played and sent.
    void finish(std::ostream& out);

private:
    HostedPlugin& _plugin;
    double _rate;
    // The input file's tempo map and division (or the render tempo's) time
    // the output file, so that an echo lands on the ticks it came from.
    MidiFile _out_file;
    std::string _out_path;
    std::unique_ptr<MidiSchedule> _schedule;
    std::unique_ptr<MidiEventBlock> _block;
    std::size_t _sent_in = 0;
    std::size_t _lost_in = 0;
    std::vector<std::uint64_t> _out_frames;  // the frame of each event of _out_file
    std::ofstream _csv_file;
    std::unique_ptr<AutomationCsv> _csv;
    std::vector<float> _values;
};

}  // namespace vsthost
