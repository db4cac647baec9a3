#include "zarquette/SamplePlayer.h"

#include "tests/zarquette/WavFileTestImage.h"
#include "zarquette/SampleVoice.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using zarquette::SamplePlayer;
using zarquette::SampleVoice;
using zarquette::WavFile;

// A player with two recordings: a constant 0.5 at 22050 Hz and a constant
// -0.25 at 44100 Hz, each 1000 frames.
struct Rig
{
    Rig()
    {
        player.resize(2);
        images.push_back(wav_test::load_samples(player.use_recording(0), std::vector<std::int16_t>(1000, 16384), 22050));
        images.push_back(wav_test::load_samples(player.use_recording(1), std::vector<std::int16_t>(1000, -8192), 44100));
        player.set_sample_freq(44100.0f);
    }

    int count_busy() const
    {
        int n = 0;
        for (int i = 0; i < SamplePlayer::nbr_voices; ++i)
        {
            n += player.use_voice(i).is_busy();
        }
        return n;
    }

    SamplePlayer player;
    std::vector<std::unique_ptr<wav_test::Bytes>> images;
};

TEST(SamplePlayer, ResizeMakesFreshRecordingsOnlyWhenTheCountChanges)
{
    Rig rig;
    rig.player.resize(2);
    EXPECT_EQ(rig.player.use_recording(0).get_nbr_frames(), 1000u);
    rig.player.resize(3);
    EXPECT_EQ(rig.player.get_nbr_recordings(), 3);
    EXPECT_EQ(rig.player.use_recording(0).get_nbr_frames(), 0u);
    EXPECT_EQ(rig.player.load(2, "meow"), 0);
    EXPECT_EQ(rig.player.load(3, "meow"), -1);
    EXPECT_EQ(rig.player.load(-1, "meow"), -1);
}

// Starts of recordings that do not exist, or at speeds that are no speed, are
// refused; the others take the lowest free voice at the recording's own rate,
// as long as there is one.
TEST(SamplePlayer, PlayTakesTheLowestFreeVoiceAtTheRecordingsRate)
{
    Rig rig;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [index, speed] : {std::pair{2, 1.0f}, {-1, 1.0f}, {0, 0.0f}, {0, -1.0f}, {0, nan}, {0, INFINITY}})
    {
        EXPECT_EQ(rig.player.play(index, 1.0f, 0.0f, speed), -1) << index << " at " << speed;
    }
    EXPECT_EQ(rig.count_busy(), 0);
    ASSERT_EQ(rig.player.play(0, 1.0f, 0.0f, 1.0f), 0);
    ASSERT_EQ(rig.player.play(1, 1.0f, 0.0f, 2.0f), 0);
    EXPECT_EQ(rig.player.use_voice(0).use_recording(), &rig.player.use_recording(0));
    EXPECT_FLOAT_EQ(rig.player.use_voice(0).get_rate(), 0.5f);
    EXPECT_FLOAT_EQ(rig.player.use_voice(1).get_rate(), 2.0f);

    rig.player.stop_all();
    EXPECT_EQ(rig.count_busy(), 0);
    rig.player.set_sample_freq(11025.0f);
    ASSERT_EQ(rig.player.play(1, 1.0f, 0.0f, 1.0f), 0);
    EXPECT_FLOAT_EQ(rig.player.use_voice(0).get_rate(), 4.0f);

    // With every voice busy a start is dropped, and nothing is cut.
    for (int i = 1; i < SamplePlayer::nbr_voices; ++i)
    {
        ASSERT_EQ(rig.player.play(i % 2, 1.0f, 0.0f, 1.0f), 0);
    }
    std::vector<float> left(10, 0.0f), right(10, 0.0f);
    rig.player.render(left.data(), right.data(), 10);
    const std::uint64_t position = rig.player.use_voice(5).get_position();

    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, 1.0f), -1);
    EXPECT_EQ(rig.count_busy(), SamplePlayer::nbr_voices);
    EXPECT_EQ(rig.player.use_voice(5).get_position(), position);
    EXPECT_EQ(rig.player.use_voice(5).use_recording(), &rig.player.use_recording(1));
}

// Every busy voice adds into the buffers, panned linearly (-6 dB per side in
// the centre); each frees itself with the block that reads its last pair of
// frames: 999 output frames from 1000 at the output rate, twice that at half.
TEST(SamplePlayer, RenderMixesEveryBusyVoiceUntilItEnds)
{
    Rig rig;
    rig.player.play(0, 1.0f, -1.0f, 1.0f);  // 0.5 on the left
    rig.player.play(1, 2.0f, 1.0f, 1.0f);   // -0.5 on the right
    rig.player.play(1, 1.0f, 0.0f, 1.0f);   // -0.125 on each side
    std::vector<float> left(999, 1.0f), right(999, 0.0f);
    rig.player.render(left.data(), right.data(), 999);
    for (std::size_t i = 0; i < left.size(); ++i)
    {
        ASSERT_FLOAT_EQ(left[i], 1.0f + 0.5f - 0.125f) << i;
        ASSERT_FLOAT_EQ(right[i], -0.5f - 0.125f) << i;
    }
    EXPECT_EQ(rig.count_busy(), 1);
    EXPECT_TRUE(rig.player.use_voice(0).is_busy());
    rig.player.render(left.data(), right.data(), 999);
    EXPECT_EQ(rig.count_busy(), 0);
}

// A voice playing a recording whose sample i is i * step.
struct Ramp
{
    Ramp(int frames, std::uint32_t rate, float speed, float gain = 1.0f, float pan = 0.0f, int step = 1)
    {
        std::vector<std::int16_t> s(static_cast<std::size_t>(frames));
        for (int i = 0; i < frames; ++i)
        {
            s[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i * step);
        }
        image = wav_test::load_samples(wav, s, rate);
        voice.start(wav, speed, gain, pan);
    }

    // The left output of n frames rendered in blocks of the given size.
    std::vector<float> render_left(int n, int block)
    {
        std::vector<float> left(static_cast<std::size_t>(n)), right(static_cast<std::size_t>(n));
        for (int done = 0; done < n; done += block)
        {
            voice.render(left.data() + done, right.data() + done, std::min(block, n - done));
        }
        return left;
    }

    WavFile wav;
    std::unique_ptr<wav_test::Bytes> image;
    SampleVoice voice;
};

// 100 frames with a right neighbour, read every half frame: 200 output frames,
// linearly interpolated, the first 199 of which leave the voice busy.
TEST(SampleVoice, HalfRateAdvancesHalfAFrameAndLastsTwiceAsLong)
{
    Ramp r(101, 22050, 22050.0f / 44100.0f, 2.0f, 0.0f, 256);
    EXPECT_EQ(r.voice.get_increment(), 0x80000000u);
    std::vector<float> out = r.render_left(199, 199);
    EXPECT_TRUE(r.voice.is_busy());
    const std::vector<float> rest = r.render_left(101, 101);
    EXPECT_FALSE(r.voice.is_busy());
    out.insert(out.end(), rest.begin(), rest.end());
    for (int f = 0; f < 200; ++f)
    {
        // Sample f/2 * 256, scaled by 2^-15.
        EXPECT_FLOAT_EQ(out[static_cast<std::size_t>(f)], f * 128.0f / 32768.0f) << f;
    }
    EXPECT_EQ(out[200], 0.0f);
}

// A rate with a long binary fraction over the longest recording length:
// rendering in uneven blocks gives exactly what one pass gives, and the
// position is exactly frames times the increment.
TEST(SampleVoice, FixedPointPositionsDoNotDependOnTheBlockSplit)
{
    const float rate = 16168.0f / 44100.0f;
    Ramp whole(72028, 16168, rate);
    Ramp split(72028, 16168, rate);
    const std::vector<float> a = whole.render_left(100000, 100000);
    std::vector<float> b;
    for (int done = 0, block = 1; done < 100000; done += block, block = block % 255 + 1)
    {
        const std::vector<float> part = split.render_left(std::min(block, 100000 - done), block);
        b.insert(b.end(), part.begin(), part.end());
    }
    EXPECT_EQ(a, b);
    EXPECT_EQ(whole.voice.get_position(), split.voice.get_position());
    EXPECT_EQ(whole.voice.get_position(), 100000u * whole.voice.get_increment());
    EXPECT_EQ(whole.voice.get_position() >> 32, static_cast<std::uint64_t>(100000.0 * rate));
}

// A voice that cannot advance is freed rather than stuck; a pan outside the
// field is its edge, and no pan at all the centre.
TEST(SampleVoice, NonsenseStartsEndSafely)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const float rate : {0.0f, -1.5f, nan, 1e20f})
    {
        Ramp r(100, 44100, rate);
        EXPECT_EQ(r.voice.get_increment(), 0u) << rate;
        EXPECT_EQ(r.render_left(4, 4), std::vector<float>(4, 0.0f)) << rate;
        EXPECT_FALSE(r.voice.is_busy()) << rate;
    }
    for (const auto& [pan, left, right] : {std::tuple{-3.0f, 0.8f, 0.0f}, {7.0f, 0.0f, 0.8f}, {nan, 0.4f, 0.4f}})
    {
        const Ramp r(4, 44100, 1.0f, 0.8f, pan);
        EXPECT_FLOAT_EQ(r.voice.get_left_gain(), left) << pan;
        EXPECT_FLOAT_EQ(r.voice.get_right_gain(), right) << pan;
    }
}

}  // namespace
