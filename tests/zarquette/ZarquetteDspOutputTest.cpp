// What the effect sounds like, pinned through the whole processor. Settings
// come in two regimes, and the first test tells which is which: a setting is
// stable when two renders from inputs 1e-7 apart stay within 1e-5 of each
// other, chaotic when its self-oscillating, bit-crushed loop filter blows such a
// difference up to an audible one. A stable setting must keep its samples (the
// sums of every channel and stored excerpts, to 1e-5); a chaotic one cannot
// keep them across compilers and instruction sets, so it must keep its sound:
// ten seconds compared as level, third-octave spectrum, stutter grid and clean
// samples against the profile of the reference render.
//
// The reference numbers below were rendered by this code. After a deliberate
// change of the sound, run the program with ZQ_PRINT_REFERENCE=1 set and paste
// what it prints in place of the tables.
#include "ProcessorRig.h"
#include "tests/support/Signal.h"
#include "tools/soundcheck/SoundComparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <numeric>
#include <vector>

namespace
{

using processor_test::Processor;
using processor_test::Stereo;
using soundcheck::SoundComparison;
using soundcheck::SoundProfile;
using zq_test::max_difference;

constexpr float kRate = 44100.0f;
constexpr double kTempo = 120.0;  // "Tempo" at 1/3
constexpr int kStableFrames = 3 * 44100;
constexpr int kChaoticFrames = 10 * 44100;
constexpr double kTolerance = 1e-5;
constexpr float kNudge = 1e-7f;

struct Setting
{
    const char* name;
    std::array<float, 6> values;  // normalized, in parameter order
    int block;
    bool chaotic;
};

// Two calm settings: the loop with light echoes in odd blocks that cut the
// processor's sub-blocks unevenly, and stronger echoes with the samples playing
// now and then. Then the defaults, whose loop repeats at full level without
// echoes and sits right at the edge of chaos; every part busy ("Oignons",
// "Nuclear Power", "Vin Rouge" and "Gauloises" at full, half the samples sent
// into the loop) in the host's usual blocks; and the loop alone on the input
// with the switch on and the echoes at full.
const Setting kQuiet = {"quiet", {1.0f / 3.0f, 0.0f, 0.5f, 0.0f, 0.0f, 0.25f}, 37, false};
const Setting kEchoes = {"echoes", {1.0f / 3.0f, 0.5f, 1.0f, 0.0f, 0.5f, 0.4f}, 256, false};
const Setting kDefaults = {"defaults", {1.0f / 3.0f, 0.0f, 0.0f, 0.0f, 0.0f, 0.0f}, 64, true};
const Setting kBusy = {"busy", {1.0f / 3.0f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f}, 512, true};
const Setting kLoopAlone = {"loop alone", {1.0f / 3.0f, 0.0f, 0.0f, 1.0f, 0.0f, 1.0f}, 256, true};

// A bass line under noise bursts: tonal and broadband input for the loop.
// Variant 0 is the plain input; every other variant adds +-1e-7 to each sample,
// the signs white noise of its own, so that the difference reaches the filter
// at every frequency.
Stereo make_input(int frames, int variant)
{
    Stereo in(static_cast<std::size_t>(frames));
    std::uint32_t noise = 1u;
    auto signs = static_cast<std::uint32_t>(variant);
    for (int i = 0; i < frames; ++i)
    {
        signs = signs * 1664525u + 1013904223u;
        noise = noise * 1664525u + 1013904223u;
        const float white = static_cast<float>(noise >> 8) * (2.0f / 16777216.0f) - 1.0f;
        const float burst = (i % 11025) < 2000 ? 0.5f : 0.05f;
        const float bass = 0.4f * std::sin(static_cast<float>(i) * (2.0f * 3.14159265f * 55.0f / kRate));
        const float nudge = variant == 0 ? 0.0f : (signs >> 31 != 0 ? kNudge : -kNudge);
        const auto n = static_cast<std::size_t>(i);
        in.l[n] = bass + burst * white + nudge;
        in.r[n] = -0.5f * (bass + burst * white) + nudge;
    }
    return in;
}

Stereo render(const Setting& setting, int frames, int variant = 0)
{
    Processor p;
    for (int i = 0; i < 6; ++i)
    {
        p.set(static_cast<processor_test::Param>(i), setting.values[static_cast<std::size_t>(i)]);
    }
    return p.render(make_input(frames, variant), {setting.block});
}

// Four nudged variants against the plain input: a setting can sit on the edge,
// where one quantiser decision out of millions turns on the last bit (the
// defaults do), and one nudge may happen to miss it.
TEST(ZarquetteDspOutput, EachSettingIsInItsRegime)
{
    constexpr int kNudgedVariants = 4;
    for (const Setting& setting : {kQuiet, kEchoes, kDefaults, kBusy, kLoopAlone})
    {
        const Stereo plain = render(setting, kStableFrames);
        float largest = 0.0f;
        for (int v = 1; v <= kNudgedVariants; ++v)
        {
            const Stereo nudged = render(setting, kStableFrames, v);
            largest = std::max({largest, max_difference(plain.l, nudged.l), max_difference(plain.r, nudged.r)});
        }
        EXPECT_EQ(largest > kTolerance, setting.chaotic) << setting.name << ": renders apart by up to " << largest;
    }
}

// --- Stable settings: the samples -------------------------------------------

// A render's signature: per channel its sum, its sum of squares and eight
// samples from each of three places (early, in the middle, near the end).
std::vector<double> signature(const Stereo& out)
{
    std::vector<double> result;
    for (const std::vector<float>* channel : {&out.l, &out.r})
    {
        result.push_back(std::accumulate(channel->begin(), channel->end(), 0.0));
        result.push_back(std::inner_product(channel->begin(), channel->end(), channel->begin(), 0.0, std::plus<>(),
                                            [](double a, double b) { return a * b; }));
        for (int at : {4410, 66150, 128000})
        {
            result.insert(result.end(), channel->begin() + at, channel->begin() + at + 8);
        }
    }
    return result;
}

void expect_same_samples(const Setting& setting, const std::vector<double>& reference)
{
    const std::vector<double> got = signature(render(setting, kStableFrames));
    if (std::getenv("ZQ_PRINT_REFERENCE") != nullptr)
    {
        std::cout << setting.name << ":\n{" << std::setprecision(17);
        std::copy(got.begin(), got.end(), std::ostream_iterator<double>(std::cout, ", "));
        std::cout << "}\n";
    }
    ASSERT_EQ(got.size(), reference.size());
    for (std::size_t i = 0; i < got.size(); ++i)
    {
        // A sample-by-sample difference of 1e-5 moves a channel's sum by at
        // most that much per frame, and its sum of squares by twice that.
        const std::size_t k = i % (got.size() / 2);
        const double tolerance = kTolerance * (k == 0 ? kStableFrames : (k == 1 ? 2.0 * kStableFrames : 1.0));
        EXPECT_NEAR(got[i], reference[i], tolerance) << setting.name << ", signature entry " << i;
    }
}

// clang-format off
const std::vector<double> kQuietReference = {-4.3047423529464126, 745.35217648274681, -0.0051526641473174095, -0.0035050413571298122, -0.0037033339031040668, -0.0067073875106871128, -0.0097101880237460136, -0.011529275216162205, -0.011753770522773266, -0.011663204059004784, -0.12555146217346191, -0.11731559038162231, -0.10552817583084106, -0.1195073127746582, -0.12825050950050354, -0.098231635987758636, -0.059609357267618179, -0.015480402857065201, -0.04641297459602356, -0.046058628708124161, -0.046320527791976929, -0.04698321595788002, -0.047491483390331268, -0.047536164522171021, -0.047042783349752426, -0.046362422406673431, -4.3047423529464126, 745.35217648274681, -0.0051526641473174095, -0.0035050413571298122, -0.0037033339031040668, -0.0067073875106871128, -0.0097101880237460136, -0.011529275216162205, -0.011753770522773266, -0.011663204059004784, -0.12555146217346191, -0.11731559038162231, -0.10552817583084106, -0.1195073127746582, -0.12825050950050354, -0.098231635987758636, -0.059609357267618179, -0.015480402857065201, -0.04641297459602356, -0.046058628708124161, -0.046320527791976929, -0.04698321595788002, -0.047491483390331268, -0.047536164522171021, -0.047042783349752426, -0.046362422406673431};
const std::vector<double> kEchoesReference = {-14.16791007873362, 1456.7020164798532, -0.0051554813981056213, -0.0035088714212179184, -0.0037042722105979919, -0.0067037325352430344, -0.0097051486372947693, -0.011525695212185383, -0.011752650141716003, -0.01166329812258482, -0.089555941522121429, -0.086286216974258423, -0.07972823828458786, -0.075630828738212585, -0.056371379643678665, -0.028474921360611916, -0.008786369115114212, 0.01465829461812973, -0.04814818874001503, -0.064271017909049988, -0.074206322431564331, -0.07809969037771225, -0.076091013848781586, -0.069662928581237793, -0.060303967446088791, -0.050870593637228012, -14.298639708391782, 1408.6745373717345, -0.0051554813981056213, -0.0035088714212179184, -0.0037042722105979919, -0.0067037325352430344, -0.0097051486372947693, -0.011525695212185383, -0.011752650141716003, -0.01166329812258482, -0.089555941522121429, -0.086286216974258423, -0.07972823828458786, -0.075630828738212585, -0.056371379643678665, -0.028474921360611916, -0.008786369115114212, 0.01465829461812973, -0.050564665347337723, -0.067299440503120422, -0.077846676111221313, -0.082336343824863434, -0.080923967063426971, -0.075090229511260986, -0.066325612366199493, -0.057294983416795731};
// clang-format on

TEST(ZarquetteDspOutput, StableSettingsKeepTheirSamples)
{
    expect_same_samples(kQuiet, kQuietReference);
    expect_same_samples(kEchoes, kEchoesReference);
}

// --- Chaotic settings: the sound --------------------------------------------

// One render of a chaotic setting is one draw from its sound: in ten seconds
// the bands below 200 Hz of two renders 1e-7 apart differ by up to 2 dB. The
// profile is therefore taken over renders of input variants 1e-7 apart, as one
// long-term spectrum; the reference over four times as many, so that its own
// scatter adds little.
constexpr int kVariants = 8;
constexpr int kReferenceVariants = 4 * kVariants;

SoundProfile profile_of(const Setting& setting, int variants)
{
    std::vector<Stereo> renders;
    std::vector<const float*> channels;
    for (int v = 0; v < variants; ++v)
    {
        // Moving a render as the list grows keeps its samples where they are.
        renders.push_back(render(setting, kChaoticFrames, v));
        channels.push_back(renders.back().l.data());
        channels.push_back(renders.back().r.data());
    }
    return SoundProfile::analyse(channels, kChaoticFrames, kRate, kTempo);
}

void expect_same_sound(const Setting& setting, const SoundProfile& ref)
{
    if (std::getenv("ZQ_PRINT_REFERENCE") != nullptr)
    {
        std::cout << setting.name << ":\n";
        profile_of(setting, kReferenceVariants).print(std::cout);
        std::cout << ",\n";
    }
    const SoundComparison comparison(profile_of(setting, kVariants), ref);
    if (!comparison.is_same())
    {
        comparison.print(std::cout);
    }
    EXPECT_TRUE(comparison.is_same()) << setting.name;
}

// clang-format off
const SoundProfile kBusyProfile =
{-11.55, {-27.20, -27.51, -32.57, -30.29, -29.57, -31.42, -30.05, -29.14, -28.54, -25.79, -23.98, -24.18, -22.57, -18.47, -17.67, -25.15, -24.06, -27.95, -31.18, -30.96, -32.68, -33.95, -38.55, -40.31, -42.24, -42.40}, "x...x............................?......?...x..?........?...x.......x..........."};
const SoundProfile kLoopAloneProfile =
{-15.13, {-20.41, -20.74, -34.74, -35.05, -35.38, -29.54, -32.29, -29.38, -31.35, -29.78, -30.57, -31.55, -33.05, -33.56, -33.68, -33.04, -32.77, -33.39, -32.63, -34.19, -34.23, -34.96, -38.73, -41.46, -42.90, -44.24}, "x...x...x.x.x.......x...x.x.x....?...x..x...x.x.x?...x..x...x.x.?x..x...x??....."};
const SoundProfile kDefaultsProfile =
{-16.75, {-26.38, -27.04, -43.47, -42.57, -47.28, -37.82, -41.94, -28.05, -28.12, -29.76, -27.76, -28.65, -39.07, -43.53, -44.22, -43.47, -42.91, -42.09, -40.76, -35.68, -27.74, -27.50, -27.91, -27.10, -27.02, -37.54}, "x.?.....x.......?.?.....x............x...x?.?x?..?...x...x?..x?......x.........?"};
// clang-format on

TEST(ZarquetteDspOutput, ChaoticSettingsKeepTheirSound)
{
    expect_same_sound(kDefaults, kDefaultsProfile);
    expect_same_sound(kBusy, kBusyProfile);
    expect_same_sound(kLoopAlone, kLoopAloneProfile);
}

}  // namespace
