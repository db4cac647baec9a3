#include "zarquette/SampleVoice.h"

#include "tests/zarquette/WavFileTestImage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <vector>

namespace
{

using zarquette::SampleVoice;
using zarquette::WavFile;

struct Stereo
{
    explicit Stereo(int n) : left(static_cast<std::size_t>(n), 0.0f), right(static_cast<std::size_t>(n), 0.0f) {}
    std::vector<float> left, right;
};

// A recording whose sample i is i * step.
struct Ramp
{
    Ramp(int frames, std::uint32_t rate, int step = 1)
    {
        std::vector<std::int16_t> s(static_cast<std::size_t>(frames));
        for (int i = 0; i < frames; ++i)
        {
            s[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i * step);
        }
        image = wav_test::load_samples(wav, s, rate);
    }
    WavFile wav;
    std::unique_ptr<wav_test::Bytes> image;
};

TEST(SampleVoice, HalfRateAdvancesHalfAFrameAndLastsTwiceAsLong)
{
    const Ramp rec(101, 22050, 256);
    SampleVoice v;
    v.start(rec.wav, 22050.0f / 44100.0f, 2.0f, 0.0f);
    EXPECT_EQ(v.get_increment(), 0x80000000u);

    // 100 frames with a right neighbour, read every half frame: 200 output frames.
    Stereo out(300);
    v.render(out.left.data(), out.right.data(), 199);
    EXPECT_TRUE(v.is_busy());
    v.render(out.left.data() + 199, out.right.data() + 199, 101);
    EXPECT_FALSE(v.is_busy());
    for (int f = 0; f < 200; ++f)
    {
        // Linear interpolation of the ramp: sample f/2 * 256, scaled by 2^-15.
        EXPECT_FLOAT_EQ(out.left[static_cast<std::size_t>(f)], f * 128.0f / 32768.0f) << f;
    }
    EXPECT_EQ(out.left[200], 0.0f);
}

TEST(SampleVoice, ARecordingOfTwoFramesAtRateOneRendersOneFrame)
{
    WavFile w;
    const auto image = wav_test::load_samples(w, {8192, 16384}, 44100);
    SampleVoice v;
    v.start(w, 1.0f, 2.0f, 0.0f);
    Stereo out(3);
    v.render(out.left.data(), out.right.data(), 3);
    EXPECT_EQ(out.left, (std::vector<float>{0.25f, 0.0f, 0.0f}));
    EXPECT_FALSE(v.is_busy());
}

TEST(SampleVoice, AVoiceEndingExactlyWithTheBlockRendersItAllAndIsFree)
{
    const Ramp rec(11, 44100);  // 10 frames left to read at rate 1
    SampleVoice v;
    v.start(rec.wav, 1.0f, 1.0f, 0.0f);
    Stereo out(10);
    v.render(out.left.data(), out.right.data(), 10);
    EXPECT_FALSE(v.is_busy());
    EXPECT_FLOAT_EQ(out.left[9], 9.0f * 0.5f / 32768.0f);
}

TEST(SampleVoice, PanIsLinearAndStaysInTheField)
{
    const Ramp rec(4, 44100);
    struct Case
    {
        float pan, left, right;
    };
    const Case cases[] = {{-1.0f, 0.8f, 0.0f}, {0.0f, 0.4f, 0.4f}, {1.0f, 0.0f, 0.8f},
                          {0.5f, 0.2f, 0.6f},  {-3.0f, 0.8f, 0.0f}, {7.0f, 0.0f, 0.8f},
                          // No pan at all is the centre.
                          {std::numeric_limits<float>::quiet_NaN(), 0.4f, 0.4f}};
    for (const Case& c : cases)
    {
        SampleVoice v;
        v.start(rec.wav, 1.0f, 0.8f, c.pan);
        EXPECT_FLOAT_EQ(v.get_left_gain(), c.left) << c.pan;
        EXPECT_FLOAT_EQ(v.get_right_gain(), c.right) << c.pan;
    }
}

TEST(SampleVoice, FixedPointPositionsDoNotDependOnTheBlockSplit)
{
    // A rate with a long binary fraction over the longest recording length:
    // rendering in uneven blocks gives exactly what one pass gives, and the
    // position is exactly frames times the increment.
    const Ramp rec(72028, 16168, 1);
    const float rate = 16168.0f / 44100.0f;
    SampleVoice whole, split;
    whole.start(rec.wav, rate, 1.0f, 0.0f);
    split.start(rec.wav, rate, 1.0f, 0.0f);
    const int n = 150000;
    Stereo a(n), b(n);
    whole.render(a.left.data(), a.right.data(), 100000);
    for (int done = 0, block = 1; done < 100000; done += block, block = block % 255 + 1)
    {
        const int k = std::min(block, 100000 - done);
        split.render(b.left.data() + done, b.right.data() + done, k);
    }
    EXPECT_EQ(a.left, b.left);
    EXPECT_EQ(whole.get_position(), split.get_position());
    EXPECT_EQ(whole.get_position(), 100000u * whole.get_increment());
    EXPECT_EQ(whole.get_position() >> 32, static_cast<std::uint64_t>(100000.0 * rate));
}

TEST(SampleVoice, AVoiceThatCannotAdvanceIsFreedRatherThanStuck)
{
    const Ramp rec(100, 44100);
    SampleVoice v;
    Stereo out(4);
    for (const float rate : {0.0f, -1.5f, std::numeric_limits<float>::quiet_NaN(), 1e20f})
    {
        v.start(rec.wav, rate, 1.0f, 0.0f);
        EXPECT_EQ(v.get_increment(), 0u) << rate;
        v.render(out.left.data(), out.right.data(), 4);
        EXPECT_FALSE(v.is_busy()) << rate;
    }
    EXPECT_EQ(out.left, std::vector<float>(4, 0.0f));
}

}  // namespace
