// MIDI files come from anywhere: the reader must refuse what does not fit
// without reading past the input, whatever it accepts must write back to a
// file that reads as the same events at the same times, and its times must
// turn into frames at the highest render rate without overflow.
#include "tests/fuzz/FuzzCheck.h"
#include "tools/vsthost/MidiFile.h"
#include "tools/vsthost/MidiSchedule.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    vsthost::MidiFile file;
    if (vsthost::MidiFile::read(data, size, file) != 0)
    {
        return 0;
    }
    vsthost::MidiSchedule(file, 768000.0).get_max_per_block(64);
    const std::vector<std::uint8_t> bytes = file.write();
    vsthost::MidiFile again;
    zq_test::require(vsthost::MidiFile::read(bytes.data(), bytes.size(), again) == 0
                     && again.events.size() == file.events.size()
                     && again.tempo.get_division() == file.tempo.get_division() && again.write() == bytes);
    for (std::size_t i = 0; i < file.events.size(); ++i)
    {
        zq_test::require(again.events[i].tick == file.events[i].tick && again.events[i].bytes == file.events[i].bytes);
    }
    return 0;
}
