#include "tools/soundcheck/SoundComparison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace
{

using soundcheck::SoundComparison;
using soundcheck::SoundProfile;

constexpr double kPi = 3.14159265358979323846;
constexpr double kRate = 44100.0;
constexpr double kTempo = 120.0;
constexpr double kSixteenth = kRate * 60.0 / kTempo / 4.0;

// Five seconds of a sine, sounding for the first half of every second 16th
// note (a stutter on the eighths) unless `skip` names one to leave out.
std::vector<float> stutter(double hz, double gain, int skip = -1)
{
    std::vector<float> x(static_cast<std::size_t>(5 * kRate));
    for (std::size_t i = 0; i < x.size(); ++i)
    {
        const auto note = static_cast<int>(static_cast<double>(i) / kSixteenth);
        const bool on = note % 2 == 0 && note != skip && static_cast<double>(i) - note * kSixteenth < kSixteenth / 2;
        x[i] = on ? static_cast<float>(gain * std::sin(2.0 * kPi * hz * static_cast<double>(i) / kRate)) : 0.0f;
    }
    return x;
}

SoundProfile profile(const std::vector<float>& x)
{
    return SoundProfile::analyse({x.data()}, x.size(), kRate, kTempo);
}

TEST(SoundProfile, LevelSpectrumAndRhythmOfAStutter)
{
    const SoundProfile p = profile(stutter(1000.0, 1.0));
    // Sounding a quarter of the time: a quarter of the sine's mean square.
    EXPECT_NEAR(p.rms_db, 10.0 * std::log10(0.5 * 0.25), 0.05);
    const auto centres = SoundProfile::get_band_centres();
    ASSERT_EQ(centres.size(), 26u);
    EXPECT_NEAR(centres.front(), 50.0, 0.5);
    EXPECT_NEAR(centres.back(), 16000.0, 1.0);
    // The 1 kHz band holds the energy; two bands away the gating's spread has
    // fallen well below it.
    EXPECT_NEAR(p.band_db[13], p.rms_db, 0.5);
    EXPECT_LT(p.band_db[11], p.rms_db - 20.0);
    EXPECT_EQ(p.onsets.substr(0, 8), "x.x.x.x.");
    EXPECT_EQ(p.nan_count + p.inf_count + p.subnormal_count, 0u);
}

TEST(SoundComparison, SameSoundOnlyWhenLevelSpectrumRhythmAndSamplesAgree)
{
    const SoundProfile reference = profile(stutter(1000.0, 0.5));
    EXPECT_TRUE(SoundComparison(reference, profile(stutter(1000.0, 0.5 * std::pow(10.0, 0.2 / 20.0)))).is_same());

    const SoundComparison louder(reference, profile(stutter(1000.0, 0.5 * std::pow(10.0, 0.3 / 20.0))));
    EXPECT_FALSE(louder.is_same());
    EXPECT_EQ(louder.get_differences().front().substr(0, 3), "RMS");

    const SoundComparison higher(reference, profile(stutter(1260.0, 0.5)));
    ASSERT_FALSE(higher.is_same());
    EXPECT_EQ(higher.get_differences().front().substr(0, 4), "band");

    const SoundComparison missing(reference, profile(stutter(1000.0, 0.5, 6)));
    ASSERT_FALSE(missing.is_same());
    EXPECT_EQ(missing.get_differences().back(), "16th note 6: an onset in A only");

    std::vector<float> broken = stutter(1000.0, 0.5);
    broken[100] = std::numeric_limits<float>::quiet_NaN();
    broken[200] = std::numeric_limits<float>::denorm_min();
    const SoundComparison unclean(reference, profile(broken));
    ASSERT_FALSE(unclean.is_same());
    EXPECT_EQ(unclean.get_differences().back(), "B has 1 NaN, 0 infinite and 1 subnormal samples");
}

}  // namespace
