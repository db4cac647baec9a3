#include "zarquette/WavFile.h"

#include "tests/zarquette/WavFileTestImage.h"
#include "zarquette/SampleSet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <numeric>

namespace
{

using zarquette::SampleSet;
using zarquette::WavFile;
using namespace wav_test;

int load(WavFile& w, const Bytes& image)
{
    return w.load_image(image.data(), image.size());
}

TEST(WavFile, WalksPastOtherChunksOddSizesAndLongFormats)
{
    const Bytes list = chunk("LIST", Bytes{'I', 'N', 'F', 'O', 'I', 'N', 'A', 'M', 3, 0, 0, 0, 'c', 'a', 't'});
    const Bytes smpl = chunk("smpl", Bytes(36, 0));
    const Bytes odd = chunk("junk", Bytes{1, 2, 3});
    const Bytes images[] = {
        riff({mono16(), list, data({1, 2, 3})}),
        riff({mono16(), data({1, 2, 3}), smpl}),
        riff({list, mono16(), smpl, data({1, 2, 3}), list}),
        riff({odd, fmt(1, 1, 22050, 2, 16, 2), odd, data({1, 2, 3})}),
        riff({data({1, 2, 3}), mono16()}),  // data first is fine too
        riff({mono16(), data({1, 2, 3}), smpl}, 4 + 24 + 14),  // what follows the RIFF size's end is not read
    };
    for (const Bytes& image : images)
    {
        WavFile w;
        ASSERT_EQ(load(w, image), 0);
        EXPECT_EQ(w.get_nbr_frames(), 3u);
        EXPECT_EQ(w.use_samples()[2], 3);
        EXPECT_EQ(w.get_sample_freq(), 22050.0f);
    }
}

// Mono 16-bit PCM is read in place. Every other sample format, every broken
// structure and every image cut short, whatever its RIFF size says, is
// refused, and the reader keeps the recording it had.
TEST(WavFile, ReadsMonoPcm16InPlaceAndRefusesEverythingElse)
{
    const Bytes good_data = data({1, 2, 3, 4});
    Bytes bad_riff = riff({mono16(), good_data});
    bad_riff[0] = 'R' + 1;
    Bytes bad_wave = riff({mono16(), good_data});
    bad_wave[8] = 'w';
    Bytes short_fmt_body = mono16();
    short_fmt_body.resize(8 + 14);
    short_fmt_body[4] = 14;
    const Bytes images[] = {
        riff({fmt(1, 2, 44100, 4, 16), good_data}),       // stereo
        riff({fmt(1, 1, 8000, 1, 8), good_data}),         // 8-bit
        riff({fmt(1, 1, 48000, 3, 24), good_data}),       // 24-bit
        riff({fmt(3, 1, 48000, 4, 32), good_data}),       // float
        riff({fmt(0xFFFE, 1, 48000, 2, 16), good_data}),  // extensible, even when it holds 16-bit PCM
        riff({fmt(2, 1, 22050, 2, 16), good_data}),       // ADPCM
        riff({fmt(1, 1, 22050, 4, 16), good_data}),       // a block that does not fit the samples
        bad_riff,
        bad_wave,
        riff({mono16()}),                                                     // no data
        riff({good_data}),                                                    // no fmt
        riff({mono16(), chunk("junk", Bytes(4, 0), 0x7FFFFFF0), good_data}),  // walks past the end
        riff({mono16(), chunk("junk", Bytes(4, 0), 0xFFFFFFFF), good_data}),  // and wraps 32 bits
        riff({mono16(), chunk("data", Bytes(8, 0), 10)}),                     // data longer than the file
        riff({short_fmt_body, good_data}),                    // fmt too short to hold the format
        riff({mono16(), good_data}, 4 + 24),                  // RIFF size ends before data
        riff({mono16(), data({})}, 4 + 24 + 7),               // ... or a byte into its header
        Bytes{'R', 'I', 'F', 'F', 4, 0, 0, 0, 'W', 'A', 'V'}, // shorter than a header
        Bytes{},
    };
    const Bytes good = riff({mono16(16168), data({7, -200, -32768})});
    WavFile w;
    ASSERT_EQ(load(w, good), 0);
    for (const Bytes& image : images)
    {
        EXPECT_EQ(load(w, image), -1) << "image " << &image - images;
    }
    for (std::size_t size = 0; size < good.size(); ++size)
    {
        EXPECT_EQ(w.load_image(good.data(), size), -1) << "cut to " << size << " bytes";
    }
    EXPECT_EQ(w.load_image(nullptr, 100), -1);
    EXPECT_EQ(w.load("no such recording"), -1);
    // Samples off their alignment.
    Bytes shifted(good.size() + 1);
    std::memcpy(shifted.data() + 1, good.data(), good.size());
    EXPECT_EQ(w.load_image(shifted.data() + 1, good.size()), -1);

    EXPECT_EQ(w.use_image(), good.data());
    EXPECT_EQ(reinterpret_cast<const std::uint8_t*>(w.use_samples()), good.data() + 44);
    EXPECT_EQ(w.get_sample_freq(), 16168.0f);
    EXPECT_EQ(w.get_nbr_frames(), 3u);
    EXPECT_EQ(w.use_samples()[1], -200);
    EXPECT_EQ(w.use_samples()[2], -32768);
}

// The shipped recordings as a whole: every name of both sets is there in the
// one accepted format, the collection has the rates and lengths it is known
// for, and each is levelled alike (peak near -6 dB, no offset) and faded in
// and out, so that playback starts and ends at silence.
TEST(WavFileRecordings, AllLoadLevelledAndFadedWithTheCollectionsRatesAndLengths)
{
    std::map<int, int> rates;
    std::uint32_t shortest = ~0u;
    std::uint32_t longest = 0;
    for (const SampleSet& set : {SampleSet::get_cats(), SampleSet::get_voices()})
    {
        for (int i = 0; i < set.size; ++i)
        {
            const char* name = set.entries[i].name;
            WavFile w;
            ASSERT_EQ(w.load(name), 0) << name;
            ++rates[static_cast<int>(w.get_sample_freq())];
            const std::uint32_t n = w.get_nbr_frames();
            shortest = std::min(shortest, n);
            longest = std::max(longest, n);
            const std::int16_t* s = w.use_samples();
            const double peak = *std::max_element(s, s + n, [](int a, int b) { return std::abs(a) < std::abs(b); });
            const double peak_db = 20.0 * std::log10(std::fabs(peak) / 32768.0);
            EXPECT_TRUE(peak_db > -7.0 && peak_db < -5.0) << name << " peaks at " << peak_db << " dB";
            EXPECT_LT(std::fabs(std::accumulate(s, s + n, 0.0) / n / 32768.0), 2e-3) << name;
            EXPECT_LT(std::max(std::abs(s[0]), std::abs(s[n - 1])), 33) << name;
        }
    }
    // 252 recordings in all.
    const std::map<int, int> expected = {{22050, 182}, {16000, 34}, {11025, 26}, {8000, 4},
                                         {16168, 3},   {25033, 1},  {44100, 1},  {48000, 1}};
    EXPECT_EQ(rates, expected);
    EXPECT_EQ(shortest, 2697u);
    EXPECT_EQ(longest, 72028u);
}

}  // namespace
