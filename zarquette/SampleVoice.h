#pragma once

#include "zarquette/WavFile.h"

#include <cstdint>

namespace zarquette
{

// Plays one recording once, resampled by linear interpolation and panned into
// a stereo pair. Its position is 32.32 fixed point (whole frames above, the
// fraction below), so long recordings at any rate ratio keep exact positions.
class SampleVoice
{
public:
    virtual ~SampleVoice() = default;

    // rate: recording frames per output frame; pan from -1 (left) to +1
    // (right), with a linear law (-6 dB per side in the centre).
    void start(const WavFile& recording, float rate, float gain, float pan);
    // Adds n frames into left and right; frees the voice when the recording
    // runs out.
    void render(float* left, float* right, int n);
    void stop() { _recording = nullptr; }
    bool is_busy() const { return _recording != nullptr; }

    const WavFile* use_recording() const { return _recording; }
    float get_rate() const { return _rate; }
    float get_left_gain() const { return _left_gain; }
    float get_right_gain() const { return _right_gain; }
    std::uint64_t get_position() const { return _position; }
    std::uint64_t get_increment() const { return _increment; }

private:
    // As many whole groups of four of the first `frames` frames as there are;
    // answers the frames rendered.
    int render_fours(const std::int16_t* samples, float* left, float* right, int frames);

    const WavFile* _recording = nullptr;
    float _rate = 0.0f;
    float _left_gain = 0.0f;
    float _right_gain = 0.0f;
    std::uint64_t _position = 0;
    std::uint64_t _increment = 0;
    // Output frames left that can be read with a right neighbour.
    std::uint64_t _frames_left = 0;
};

}  // namespace zarquette
