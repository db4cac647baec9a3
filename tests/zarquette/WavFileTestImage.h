#pragma once

// Mono 16-bit WAVE images in memory, for the tests of the reader and of
// everything that plays recordings.

#include "tests/support/Riff.h"
#include "zarquette/WavFile.h"

#include <memory>
#include <vector>

namespace wav_test
{

using zq_test::Bytes;
using zq_test::chunk;
using zq_test::fmt;
using zq_test::riff;

inline Bytes mono16(std::uint32_t rate = 22050)
{
    return fmt(1, 1, rate, 2, 16);
}

inline Bytes data(const std::vector<std::int16_t>& samples)
{
    Bytes b;
    for (const std::int16_t s : samples)
    {
        zq_test::put_le(b, static_cast<std::uint16_t>(s), 2);
    }
    return chunk("data", b);
}

// Loads a mono 16-bit image of these samples into w; the image must outlive w's use.
inline std::unique_ptr<Bytes> load_samples(zarquette::WavFile& w, const std::vector<std::int16_t>& samples,
                                           std::uint32_t rate)
{
    auto image = std::make_unique<Bytes>(riff({mono16(rate), data(samples)}));
    w.load_image(image->data(), image->size());
    return image;
}

}  // namespace wav_test
