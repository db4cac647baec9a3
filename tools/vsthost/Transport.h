#pragma once

#include "lumo/vst2/Vst2Abi.h"

#include <cstdint>

namespace vsthost
{

// The host's song position: a playing transport in 4/4 at a fixed tempo,
// starting at the song's beginning. It fills the time record that plug-ins
// ask for and moves on by the frames of each processed block.
class Transport
{
public:
    void set_tempo(double bpm) { _tempo = bpm; }
    double get_tempo() const { return _tempo; }
    void set_sample_rate(double rate) { _sample_rate = rate; }
    void rewind() { _frame = 0.0; }
    void advance(std::int32_t frames) { _frame += frames; }
    double get_frame() const { return _frame; }

    // The record for the current position; only the audio thread asks for it.
    lumo::vst2::TimeInfo* use_time_info();

private:
    double _tempo = 120.0;
    double _sample_rate = 44100.0;
    double _frame = 0.0;
    lumo::vst2::TimeInfo _info{};
};

}  // namespace vsthost
