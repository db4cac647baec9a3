#include "zarquette/SamplePlayer.h"

#include "tests/zarquette/WavFileTestImage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

using zarquette::SamplePlayer;

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
    SamplePlayer player;
    std::vector<std::unique_ptr<wav_test::Bytes>> images;
};

int count_busy(const SamplePlayer& p)
{
    int n = 0;
    for (int i = 0; i < SamplePlayer::nbr_voices; ++i)
    {
        n += p.use_voice(i).is_busy();
    }
    return n;
}

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

TEST(SamplePlayer, PlayTakesTheLowestFreeVoiceAtTheRecordingsRate)
{
    Rig rig;
    ASSERT_EQ(rig.player.play(0, 1.0f, 0.0f, 1.0f), 0);
    ASSERT_EQ(rig.player.play(1, 1.0f, 0.0f, 2.0f), 0);
    EXPECT_EQ(rig.player.use_voice(0).use_recording(), &rig.player.use_recording(0));
    EXPECT_FLOAT_EQ(rig.player.use_voice(0).get_rate(), 0.5f);
    EXPECT_FLOAT_EQ(rig.player.use_voice(1).get_rate(), 2.0f);

    rig.player.stop_all();
    EXPECT_EQ(count_busy(rig.player), 0);
    rig.player.set_sample_freq(11025.0f);
    ASSERT_EQ(rig.player.play(1, 1.0f, 0.0f, 1.0f), 0);
    EXPECT_FLOAT_EQ(rig.player.use_voice(0).get_rate(), 4.0f);
}

TEST(SamplePlayer, WithEveryVoiceBusyAStartIsDroppedAndNothingIsCut)
{
    Rig rig;
    for (int i = 0; i < SamplePlayer::nbr_voices; ++i)
    {
        ASSERT_EQ(rig.player.play(i % 2, 1.0f, 0.0f, 1.0f), 0);
    }
    std::vector<float> left(10, 0.0f), right(10, 0.0f);
    rig.player.render(left.data(), right.data(), 10);
    const std::uint64_t position = rig.player.use_voice(5).get_position();

    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, 1.0f), -1);
    EXPECT_EQ(count_busy(rig.player), SamplePlayer::nbr_voices);
    EXPECT_EQ(rig.player.use_voice(5).get_position(), position);
    EXPECT_EQ(rig.player.use_voice(5).use_recording(), &rig.player.use_recording(1));
}

TEST(SamplePlayer, NonsenseStartsAreRefused)
{
    Rig rig;
    EXPECT_EQ(rig.player.play(2, 1.0f, 0.0f, 1.0f), -1);
    EXPECT_EQ(rig.player.play(-1, 1.0f, 0.0f, 1.0f), -1);
    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, 0.0f), -1);
    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, -1.0f), -1);
    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, std::numeric_limits<float>::quiet_NaN()), -1);
    EXPECT_EQ(rig.player.play(0, 1.0f, 0.0f, std::numeric_limits<float>::infinity()), -1);
    EXPECT_EQ(count_busy(rig.player), 0);
}

TEST(SamplePlayer, RenderMixesEveryBusyVoiceIntoTheBuffers)
{
    Rig rig;
    rig.player.play(0, 1.0f, -1.0f, 1.0f);  // 0.5 on the left
    rig.player.play(1, 2.0f, 1.0f, 1.0f);   // -0.5 on the right
    rig.player.play(1, 1.0f, 0.0f, 1.0f);   // -0.125 on each side
    std::vector<float> left(4, 1.0f), right(4, 0.0f);
    rig.player.render(left.data(), right.data(), 4);
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_FLOAT_EQ(left[static_cast<std::size_t>(i)], 1.0f + 0.5f - 0.125f);
        EXPECT_FLOAT_EQ(right[static_cast<std::size_t>(i)], -0.5f - 0.125f);
    }
}

TEST(SamplePlayer, VoicesFreeThemselvesAtTheEnd)
{
    Rig rig;
    rig.player.play(1, 1.0f, 0.0f, 1.0f);  // 999 frames
    rig.player.play(0, 1.0f, 0.0f, 1.0f);  // 1998 frames
    std::vector<float> left(1000), right(1000);
    rig.player.render(left.data(), right.data(), 999);
    EXPECT_EQ(count_busy(rig.player), 1);
    EXPECT_FALSE(rig.player.use_voice(0).is_busy());
    rig.player.render(left.data(), right.data(), 999);
    EXPECT_EQ(count_busy(rig.player), 0);
}

}  // namespace
