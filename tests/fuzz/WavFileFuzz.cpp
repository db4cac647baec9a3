// Feeds arbitrary bytes to the WAVE reader as an embedded image. Whatever it
// accepts must lie wholly inside the input, and playing it must read nothing
// else.
#include "tests/fuzz/FuzzCheck.h"
#include "zarquette/SampleVoice.h"
#include "zarquette/WavFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    zarquette::WavFile wav;
    if (wav.load_image(data, size) != 0)
    {
        return 0;
    }
    const auto* first = reinterpret_cast<const std::uint8_t*>(wav.use_samples());
    zq_test::require(wav.use_image() == data && first >= data + 20
                     && static_cast<std::size_t>(first - data) + 2u * wav.get_nbr_frames() <= size);
    // Play it through a voice at a rate taken from the input, a block at a time.
    constexpr int block = 64;
    float left[block] = {}, right[block] = {};
    const float rate = 0.25f + static_cast<float>(data[size - 1]) / 64.0f;
    zarquette::SampleVoice voice;
    voice.start(wav, rate, 1.0f, 0.0f);
    for (int i = 0; i < 1024 && voice.is_busy(); ++i)
    {
        voice.render(left, right, block);
    }
    return 0;
}
