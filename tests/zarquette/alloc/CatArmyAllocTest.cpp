// The cat army renders on the audio thread, where nothing may allocate. This
// program replaces the global operator new to count allocations, which is why
// it is a program of its own.
#include "zarquette/CatArmy.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <vector>

namespace
{

long allocations = 0;

}  // namespace

void* operator new(std::size_t n)
{
    ++allocations;
    if (void* p = std::malloc(n == 0 ? 1 : n))
    {
        return p;
    }
    throw std::bad_alloc();
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

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
    const long before = allocations;
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
    EXPECT_EQ(allocations, before);
    EXPECT_GT(most_busy, 5);
}

}  // namespace
