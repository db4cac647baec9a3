#include "zarquette/WavFile.h"

#include "tests/zarquette/WavFileTestImage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace
{

using namespace wav_test;

int load(zarquette::WavFile& w, const Bytes& image)
{
    return w.load_image(image.data(), image.size());
}

TEST(WavFile, ReadsMonoPcm16InPlace)
{
    const Bytes image = riff({mono16(16168), data({100, -200, 32767, -32768})});
    zarquette::WavFile w;
    ASSERT_EQ(load(w, image), 0);
    EXPECT_EQ(w.use_image(), image.data());
    EXPECT_EQ(reinterpret_cast<const std::uint8_t*>(w.use_samples()), image.data() + 44);
    EXPECT_EQ(w.get_sample_freq(), 16168.0f);
    ASSERT_EQ(w.get_nbr_frames(), 4u);
    EXPECT_EQ(w.use_samples()[1], -200);
    EXPECT_EQ(w.use_samples()[3], -32768);
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
    };
    for (const Bytes& image : images)
    {
        zarquette::WavFile w;
        ASSERT_EQ(load(w, image), 0);
        EXPECT_EQ(w.get_nbr_frames(), 3u);
        EXPECT_EQ(w.use_samples()[2], 3);
        EXPECT_EQ(w.get_sample_freq(), 22050.0f);
    }
}

TEST(WavFile, RefusesEveryOtherSampleFormat)
{
    const Bytes formats[] = {
        fmt(1, 2, 44100, 4, 16),       // stereo
        fmt(1, 1, 8000, 1, 8),         // 8-bit
        fmt(1, 1, 48000, 3, 24),       // 24-bit
        fmt(3, 1, 48000, 4, 32),       // float
        fmt(0xFFFE, 1, 48000, 2, 16),  // extensible, even when it holds 16-bit PCM
        fmt(2, 1, 22050, 2, 16),       // ADPCM
        fmt(1, 1, 22050, 4, 16),       // a block that does not fit the samples
    };
    for (const Bytes& f : formats)
    {
        zarquette::WavFile w;
        EXPECT_EQ(load(w, riff({f, data({1, 2})})), -1);
    }
}

TEST(WavFile, RefusesBrokenStructures)
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
        bad_riff,
        bad_wave,
        riff({mono16()}),                                           // no data
        riff({good_data}),                                          // no fmt
        riff({mono16(), chunk("junk", Bytes(4, 0), 0x7FFFFFF0), good_data}),  // walks past the end
        riff({mono16(), chunk("junk", Bytes(4, 0), 0xFFFFFFFF), good_data}),  // and wraps 32 bits
        riff({mono16(), chunk("data", Bytes(8, 0), 10)}),           // data longer than the file
        riff({short_fmt_body, good_data}),                          // fmt too short to hold the format
        riff({mono16(), good_data}, 4 + 24),                        // RIFF size ends before data
        Bytes{'R', 'I', 'F', 'F', 4, 0, 0, 0, 'W', 'A', 'V'},       // shorter than a header
        Bytes{},
    };
    for (const Bytes& image : images)
    {
        zarquette::WavFile w;
        EXPECT_EQ(load(w, image), -1);
    }
    zarquette::WavFile w;
    EXPECT_EQ(w.load_image(nullptr, 100), -1);
    // Samples off their alignment.
    const Bytes image = riff({mono16(), data({1, 2})});
    Bytes shifted(image.size() + 1);
    std::memcpy(shifted.data() + 1, image.data(), image.size());
    EXPECT_EQ(w.load_image(shifted.data() + 1, image.size()), -1);
}

TEST(WavFile, ATruncatedImageIsRefusedWhateverItsRiffSays)
{
    const Bytes image = riff({mono16(), data({1, 2, 3, 4, 5, 6})});
    zarquette::WavFile w;
    for (std::size_t size = 0; size < image.size(); ++size)
    {
        EXPECT_EQ(w.load_image(image.data(), size), -1) << size;
    }
    EXPECT_EQ(w.load_image(image.data(), image.size()), 0);
    // Bytes after the RIFF size's end are not part of the image, even if present.
    Bytes longer = image;
    zq_test::put_bytes(longer, chunk("smpl", Bytes(36, 0)));
    EXPECT_EQ(load(w, longer), 0);
    EXPECT_EQ(w.get_nbr_frames(), 6u);
}

TEST(WavFile, AFailedLoadKeepsThePreviousRecording)
{
    const Bytes good = riff({mono16(11025), data({7, 8, 9})});
    const Bytes stereo = riff({fmt(1, 2, 44100, 4, 16), data({1, 2})});
    zarquette::WavFile w;
    ASSERT_EQ(load(w, good), 0);
    EXPECT_EQ(load(w, stereo), -1);
    EXPECT_EQ(w.load("no such recording"), -1);
    EXPECT_EQ(w.use_image(), good.data());
    EXPECT_EQ(w.get_sample_freq(), 11025.0f);
    EXPECT_EQ(w.get_nbr_frames(), 3u);
    EXPECT_EQ(w.use_samples()[0], 7);
}

}  // namespace
