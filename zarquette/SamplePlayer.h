#pragma once

#include "zarquette/SampleVoice.h"
#include "zarquette/WavFile.h"

#include <cstdint>
#include <memory>

namespace zarquette
{

// The loaded recordings and a fixed pool of voices that play them one-shot at
// the output rate. When every voice is busy a new start is dropped: no voice
// is ever cut short.
class SamplePlayer
{
public:
    static constexpr int nbr_voices = 64;

    // Makes room for n recordings (all fresh) unless there are n already.
    void resize(int n);
    int get_nbr_recordings() const { return _nbr_recordings; }
    // Loads recording i from the embedded resource name: 0, or -1.
    int load(int i, const char* name);
    WavFile& use_recording(int i) { return _recordings[i]; }
    const WavFile& use_recording(int i) const { return _recordings[i]; }
    const SampleVoice& use_voice(int i) const { return _voices[i]; }

    // The output rate; voices started afterwards play at it.
    void set_sample_freq(float hz) { _sample_freq = hz; }
    float get_sample_freq() const { return _sample_freq; }
    void stop_all();

    // Starts recording index on the lowest free voice: 0, or -1 when no voice
    // is free, the index is out of range or the resulting rate is not a
    // positive number.
    int play(int index, float gain, float pan, float speed);
    // Adds n frames of every busy voice into left and right.
    void render(float* left, float* right, int n);

private:
    std::unique_ptr<WavFile[]> _recordings;
    int _nbr_recordings = 0;
    SampleVoice _voices[nbr_voices];
    // Bit v is set while voice v is busy, so that a block visits only the busy
    // voices, still in voice order.
    std::uint64_t _busy = 0;
    float _sample_freq = 44100.0f;
};

}  // namespace zarquette
