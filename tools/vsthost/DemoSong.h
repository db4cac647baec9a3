#pragma once

#include <cstddef>
#include <cstdint>

namespace vsthost
{

// The built-in test signal: an 8-bar drum and bass loop in 4/4 (kick, snare,
// closed hats and a saw bass line), synthesised in stereo at any rate and
// tempo. The same rate and tempo always give the same samples.
class DemoSong
{
public:
    static constexpr int bars = 8;

    DemoSong(double sample_rate, double tempo);

    std::uint64_t get_frame_count() const { return _frame_count; }
    // Writes up to frames frames; answers how many, 0 once the song is over.
    std::size_t render(float* left, float* right, std::size_t frames);

private:
    struct Voice
    {
        double age = 1e9;  // seconds since the last hit
        double phase = 0.0;
        float level = 0.0f;
    };

    void start_step(int step);
    float next_noise();
    float render_kick();
    float render_snare();
    float render_hat();
    float render_bass();

    double _rate;
    double _frames_per_step;
    std::uint64_t _frame_count;
    std::uint64_t _frame = 0;
    int _step = -1;
    std::uint32_t _noise_state = 22222;
    Voice _kick;
    Voice _snare;
    Voice _hat;
    Voice _bass;
    double _bass_freq = 55.0;
    double _bass_gate = 0.0;
    float _bass_lowpass = 0.0f;
    float _hat_lowpass = 0.0f;
};

}  // namespace vsthost
