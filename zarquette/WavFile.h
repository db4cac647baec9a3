#pragma once

#include <cstddef>
#include <cstdint>

namespace zarquette
{

// One recording: a RIFF WAVE image of mono 16-bit integer PCM, read in place.
// Nothing is copied: the samples stay where the image is (an embedded
// resource, alive as long as the module), and destroying a WavFile frees
// nothing.
class WavFile
{
public:
    // Loads the embedded resource of type "WAVE" with this name (any case).
    // Returns 0, or -1 when it is missing or not a recording this class reads;
    // on failure every field keeps its previous value.
    int load(const char* name);

    // The same from an image of size bytes. Every read stays inside the image:
    // a chunk walk that would pass its end, or a "data" chunk longer than what
    // is there, is refused.
    int load_image(const std::uint8_t* image, std::size_t size);

    const std::uint8_t* use_image() const { return _image; }
    const std::int16_t* use_samples() const { return _samples; }
    float get_sample_freq() const { return _sample_freq; }
    std::uint32_t get_nbr_frames() const { return _nbr_frames; }

private:
    const std::uint8_t* _image = nullptr;
    const std::int16_t* _samples = nullptr;
    float _sample_freq = 0.0f;
    std::uint32_t _nbr_frames = 0;
};

}  // namespace zarquette
