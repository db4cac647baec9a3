// The cat army renders on the audio thread, where nothing may allocate.
#include "zarquette/CatArmy.h"

#include "AllocationCounter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace
{

TEST(CatArmyAlloc, RenderingAllocatesNothing)
{
    zarquette::CatArmy army(zarquette::SampleSet::get_cats());
    std::vector<float> left(256), right(256);
    army.set_buffers(left.data(), right.data());
    army.set_sample_freq(48000.0f);
    army.set_oignons(1.0f);
    army.reset();
    const AllocationCounter counter;
    int most_busy = 0;
    // A minute of audio at full density, in blocks of every size up to 256.
    for (long frames = 0, n = 1; frames < 48000L * 60; frames += n, n = n % 256 + 1)
    {
        army.render(static_cast<int>(n));
        int busy = 0;
        for (int v = 0; v < zarquette::SamplePlayer::nbr_voices; ++v)
        {
            busy += army.use_player().use_voice(v).is_busy();
        }
        most_busy = std::max(most_busy, busy);
    }
    EXPECT_EQ(counter.get_count(), 0);
    EXPECT_GT(most_busy, 5);
}

}  // namespace
