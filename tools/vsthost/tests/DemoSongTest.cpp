#include "tools/vsthost/DemoSong.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{

using vsthost::DemoSong;

TEST(DemoSong, LastsEightBarsAtTheGivenTempo)
{
    EXPECT_EQ(DemoSong(44100, 120).get_frame_count(), 705600u);  // 32 beats of 0.5 s
    EXPECT_EQ(DemoSong(48000, 60).get_frame_count(), 48000u * 32u);
}

TEST(DemoSong, IsDeterministicLoudButUnclippedAndEnds)
{
    DemoSong a(44100, 140);
    DemoSong b(44100, 140);
    std::vector<float> al(1000), ar(1000), bl(1000), br(1000);
    float peak = 0.0f;
    double energy = 0.0;
    std::size_t total = 0;
    for (;;)
    {
        const std::size_t n = a.render(al.data(), ar.data(), al.size());
        ASSERT_EQ(b.render(bl.data(), br.data(), bl.size()), n);
        if (n == 0)
        {
            break;
        }
        total += n;
        for (std::size_t i = 0; i < n; ++i)
        {
            ASSERT_EQ(al[i], bl[i]);
            ASSERT_TRUE(std::isfinite(al[i]) && std::isfinite(ar[i]));
            peak = std::max({peak, std::fabs(al[i]), std::fabs(ar[i])});
            energy += al[i] * al[i];
        }
    }
    EXPECT_EQ(total, a.get_frame_count());
    EXPECT_LT(peak, 1.0f);
    EXPECT_GT(peak, 0.3f);
    EXPECT_GT(std::sqrt(energy / static_cast<double>(total)), 0.03);
}

}  // namespace
