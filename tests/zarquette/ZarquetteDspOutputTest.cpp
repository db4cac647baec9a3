// What the effect sounds like, pinned: a few seconds of its busiest setting and
// of a quiet one, rendered through the whole processor, must keep the sums of
// every channel and a stored excerpt of each to within 1e-5. Optimisations of
// the engine may regroup arithmetic but must not change the sound.
//
// The reference numbers below were rendered by this code. After a deliberate
// change of the sound, run the program with ZQ_PRINT_REFERENCE=1 set and paste
// what it prints in place of the tables.
#include "lumo/NormalizedParamInterface.h"
#include "sys/ClockPin.h"
#include "zarquette/ZarquetteDsp.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace
{

constexpr float kRate = 44100.0f;
constexpr int kFrames = 3 * 44100;
constexpr int kExcerptLen = 8;
// Where the excerpts start: early, in the middle, near the end.
constexpr std::array<int, 3> kExcerptAt = {4410, 66150, 128000};
constexpr int kExcerptTotal = kExcerptLen * static_cast<int>(kExcerptAt.size());
constexpr double kTolerance = 1e-5;

struct Setting
{
    const char* name;
    std::array<float, 6> values;  // normalized, in parameter order
    int block;
};

// Every part busy ("Oignons", "Nuclear Power", "Vin Rouge" and "Gauloises" at
// full, half the samples sent into the loop) in the host's usual blocks; and a
// calm one in odd blocks that cut the processor's sub-blocks unevenly.
const Setting kBusy = {"busy", {1.0f / 3.0f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f}, 512};
const Setting kQuiet = {"quiet", {1.0f / 3.0f, 0.0f, 0.5f, 0.0f, 0.0f, 0.25f}, 37};

struct ChannelSums
{
    double sum = 0.0;
    double sum_sq = 0.0;
};

struct Render
{
    std::array<ChannelSums, 2> sums;
    std::array<std::array<float, kExcerptTotal>, 2> excerpt{};
};

// A bass line under noise bursts: tonal and broadband input for the loop.
float input_sample(int i, std::uint32_t& noise)
{
    noise = noise * 1664525u + 1013904223u;
    const float white = static_cast<float>(noise >> 8) * (2.0f / 16777216.0f) - 1.0f;
    const float burst = (i % 11025) < 2000 ? 0.5f : 0.05f;
    return 0.4f * std::sin(static_cast<float>(i) * (2.0f * 3.14159265f * 55.0f / kRate)) + burst * white;
}

Render render(const Setting& setting)
{
    // 10:00 on a cat day: no lunch break, the cat set.
    const sys::ClockPin clock(1000.0, sys::LocalTime{2026, 11, 9, 10, 0, 0});
    zarquette::ZarquetteDsp dsp;
    dsp.init();
    dsp.set_default_state();
    dsp.set_sample_freq(kRate);
    for (int i = 0; i < 6; ++i)
    {
        dsp.use_param(i).set_norm_value(setting.values[static_cast<std::size_t>(i)]);
    }
    std::vector<float> l(kFrames), r(kFrames), ol(kFrames), orr(kFrames);
    std::uint32_t noise = 1u;
    for (int i = 0; i < kFrames; ++i)
    {
        l[static_cast<std::size_t>(i)] = input_sample(i, noise);
        r[static_cast<std::size_t>(i)] = -0.5f * l[static_cast<std::size_t>(i)];
    }
    for (int f = 0; f < kFrames; f += setting.block)
    {
        const float* in[2] = {l.data() + f, r.data() + f};
        float* out[2] = {ol.data() + f, orr.data() + f};
        dsp.process_replacing(out, in, std::min(setting.block, kFrames - f), 0);
    }
    Render result;
    const std::array<const std::vector<float>*, 2> channels = {&ol, &orr};
    for (std::size_t c = 0; c < 2; ++c)
    {
        for (float x : *channels[c])
        {
            result.sums[c].sum += x;
            result.sums[c].sum_sq += static_cast<double>(x) * x;
        }
        for (std::size_t e = 0; e < kExcerptAt.size(); ++e)
        {
            for (int k = 0; k < kExcerptLen; ++k)
            {
                result.excerpt[c][e * kExcerptLen + static_cast<std::size_t>(k)] =
                    (*channels[c])[static_cast<std::size_t>(kExcerptAt[e] + k)];
            }
        }
    }
    return result;
}

void print_reference(const Render& r)
{
    for (std::size_t c = 0; c < 2; ++c)
    {
        std::printf("{%.17g, %.17g},\n", r.sums[c].sum, r.sums[c].sum_sq);
    }
    for (std::size_t c = 0; c < 2; ++c)
    {
        std::printf("{");
        for (float x : r.excerpt[c])
        {
            std::printf("%.9gf, ", static_cast<double>(x));
        }
        std::printf("},\n");
    }
}

struct Reference
{
    std::array<ChannelSums, 2> sums;
    std::array<std::array<float, kExcerptTotal>, 2> excerpt;
};

void expect_matches(const Setting& setting, const Reference& ref)
{
    const Render got = render(setting);
    if (std::getenv("ZQ_PRINT_REFERENCE") != nullptr)
    {
        std::printf("%s:\n", setting.name);
        print_reference(got);
    }
    // A sample-by-sample difference of 1e-5 moves a channel's sums by at most
    // that much per frame.
    const double sum_tolerance = kTolerance * kFrames;
    for (std::size_t c = 0; c < 2; ++c)
    {
        EXPECT_NEAR(got.sums[c].sum, ref.sums[c].sum, sum_tolerance) << setting.name << " channel " << c;
        EXPECT_NEAR(got.sums[c].sum_sq, ref.sums[c].sum_sq, 2.0 * sum_tolerance) << setting.name << " channel " << c;
        for (std::size_t i = 0; i < got.excerpt[c].size(); ++i)
        {
            EXPECT_NEAR(got.excerpt[c][i], ref.excerpt[c][i], kTolerance)
                << setting.name << " channel " << c << " excerpt sample " << i;
        }
    }
}

// clang-format off
// The busy setting runs the quantised feedback, where a last-bit difference
// grows into a different render within a fraction of a second; the C runtimes
// of Linux and Windows round a few of their mathematical functions differently
// in the last bit, so each keeps its own reference.
#ifdef _WIN32
const Reference kBusyReference = {
    {{{-64.395914046462906, 4397.6267175984258}, {-65.5490364605119, 4384.5696008164186}}},
    {{
        {-0.0785738677f, -0.0804770887f, -0.082265012f, -0.0840766653f, -0.0857731849f, -0.0877087787f, -0.0895297453f, -0.0914517269f, -0.279194921f, -0.260202169f, -0.250344366f, -0.229004428f, -0.199492157f, -0.176398158f, -0.149454087f, -0.103525244f, -0.62649107f, -0.596137643f, -0.578766584f, -0.557291508f, -0.50824219f, -0.430978596f, -0.362940937f, -0.277985096f},
        {-0.0863440633f, -0.0877737552f, -0.0890881643f, -0.0901751891f, -0.091147095f, -0.0923580751f, -0.0934544131f, -0.0945125893f, 0.0719537511f, 0.0677337274f, 0.0519658253f, 0.0336462408f, 0.0210942328f, -0.0122568756f, -0.0384770036f, -0.0661812201f, -0.672131062f, -0.642259955f, -0.643808365f, -0.633332849f, -0.566390872f, -0.458759099f, -0.357217252f, -0.223931551f},
    }},
};
#else
const Reference kBusyReference = {
    {{{-56.318164256421198, 4348.3445605463421}, {-57.471287363461499, 4322.0650309962193}}},
    {{
        {-0.0403286107f, -0.0416067876f, -0.0429467112f, -0.044120606f, -0.0453537367f, -0.0466391444f, -0.0479813144f, -0.0492408983f, -0.311235487f, -0.291385591f, -0.278748989f, -0.252414525f, -0.21802932f, -0.189584568f, -0.156544909f, -0.104551427f, -0.537042499f, -0.492230177f, -0.463369161f, -0.428268075f, -0.368637085f, -0.278792739f, -0.201960206f, -0.118302546f},
        {-0.0480988137f, -0.0489034615f, -0.049769856f, -0.0502191372f, -0.0507276468f, -0.0512884408f, -0.0519059896f, -0.0523017608f, 0.0399131775f, 0.0365503132f, 0.0235611945f, 0.0102361441f, 0.00255705416f, -0.0254432857f, -0.0455678254f, -0.0672074035f, -0.58268249f, -0.53835243f, -0.528411031f, -0.504309475f, -0.426785737f, -0.306573242f, -0.196236536f, -0.0642490089f},
    }},
};
#endif

const Reference kQuietReference = {
    {{{-4.3036339873689471, 745.35230120042127}, {-4.3036339873689471, 745.35230120042127}}},
    {{
        {-0.00515264552f, -0.00350502366f, -0.00370331435f, -0.00670737121f, -0.0097101694f, -0.0115292585f, -0.011753751f, -0.0116631873f, -0.125551462f, -0.117315643f, -0.105528407f, -0.119507663f, -0.128250986f, -0.0982321575f, -0.0596098676f, -0.0154808499f, -0.0464129969f, -0.0460586362f, -0.0463205427f, -0.0469832346f, -0.047491502f, -0.0475361682f, -0.0470427871f, -0.0463624299f},
        {-0.00515264552f, -0.00350502366f, -0.00370331435f, -0.00670737121f, -0.0097101694f, -0.0115292585f, -0.011753751f, -0.0116631873f, -0.125551462f, -0.117315643f, -0.105528407f, -0.119507663f, -0.128250986f, -0.0982321575f, -0.0596098676f, -0.0154808499f, -0.0464129969f, -0.0460586362f, -0.0463205427f, -0.0469832346f, -0.047491502f, -0.0475361682f, -0.0470427871f, -0.0463624299f},
    }},
};
// clang-format on

TEST(ZarquetteDspOutput, BusySettingSoundsAsBefore)
{
    expect_matches(kBusy, kBusyReference);
}

TEST(ZarquetteDspOutput, QuietSettingSoundsAsBefore)
{
    expect_matches(kQuiet, kQuietReference);
}

}  // namespace
