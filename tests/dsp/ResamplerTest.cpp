#include "dsp/Downsampler2x.h"
#include "dsp/HalfBandDesign.h"
#include "dsp/Upsampler2x.h"

#include "tests/dsp/Settled.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <tuple>
#include <utility>
#include <vector>

namespace
{

using dsp_test::sine;

std::vector<double> design(double transition)
{
    std::vector<double> coefs;
    dsp::design_half_band(coefs, 69.0, transition);
    return coefs;
}

// The loop engine's designs: steep with 8 stages at a transition of 0.01,
// gentle with 3 at 0.2; both must keep images 65 dB down.
constexpr double kSteep = 0.01;
constexpr double kGentle = 0.2;
const double kStopBand = std::pow(10.0, -65.0 / 20.0);

// Every design, sensible or not, is a list of stable stages, each coefficient
// in (0, 1) and rising; their number follows attenuation and transition.
TEST(HalfBandDesign, StageCountFollowsAttenuationAndTransition)
{
    const double nan = std::nan("");
    for (const auto& [db, transition, least, most] :
         {std::tuple{20.0, 0.45, 1u, 1u}, {69.0, kGentle, 3u, 3u}, {69.0, kSteep, 8u, 8u}, {120.0, kSteep, 9u, 99u},
          {nan, -1.0, 1u, 99u}, {nan, 0.0, 1u, 99u}, {nan, 0.5, 1u, 99u}, {nan, 3.0, 1u, 99u}, {nan, nan, 1u, 99u}})
    {
        SCOPED_TRACE(testing::Message() << db << " dB, transition " << transition);
        std::vector<double> coefs;
        dsp::design_half_band(coefs, db, transition);
        EXPECT_TRUE(coefs.size() >= least && coefs.size() <= most) << coefs.size() << " stages";
        for (std::size_t i = 0; i < coefs.size(); ++i)
        {
            EXPECT_TRUE(coefs[i] > (i == 0 ? 0.0 : coefs[i - 1]) && coefs[i] < 1.0) << "stage " << i;
        }
    }
}

// Gain of a downsampler for a sine of `cycles` per sample at its input rate.
template <int N>
double downsampled_gain(double transition, double cycles)
{
    dsp::Downsampler2x<N> down;
    down.load_coefs(design(transition));
    return std::sqrt(2.0) * dsp_test::settled_rms(
        20000, [&](int i) { return down.downsample_pair(sine(cycles, 2 * i), sine(cycles, 2 * i + 1)); });
}

// Amplitudes of the upsampled sine and of its image (mirrored about the input
// rate's Nyquist), from a window holding a whole number of cycles of both.
template <int N>
std::pair<double, double> tone_and_image(double transition, double cycles)
{
    dsp::Upsampler2x<N> up;
    up.load_coefs(design(transition));
    constexpr int kSettle = 4000;
    constexpr int kWindow = 1000;  // input samples
    std::complex<double> tone;
    std::complex<double> image;
    for (int i = 0; i < kSettle + kWindow; ++i)
    {
        const auto y = up.upsample(sine(cycles, i));
        for (int k = 0; i >= kSettle && k < 2; ++k)
        {
            const int n = 2 * (i - kSettle) + k;
            tone += static_cast<double>(y[k]) * std::polar(1.0, -dsp_test::kPi * cycles * n);
            image += static_cast<double>(y[k]) * std::polar(1.0, -dsp_test::kPi * (1.0 - cycles) * n);
        }
    }
    return {std::abs(tone) / kWindow, std::abs(image) / kWindow};
}

// Both directions keep the band and reject its image 65 dB down. Rates are
// relative to the input: the steep pass band ends just below a quarter and
// its stop band starts just above; the gentle pair only guards the top.
TEST(Resampler, BothDirectionsPassTheBandAndRejectItsImage)
{
    EXPECT_NEAR(downsampled_gain<8>(kSteep, 0.1), 1.0, 1e-4);
    EXPECT_NEAR(downsampled_gain<8>(kSteep, 0.23), 1.0, 1e-3);
    EXPECT_LT(downsampled_gain<8>(kSteep, 0.3), kStopBand);
    EXPECT_NEAR(downsampled_gain<3>(kGentle, 0.05), 1.0, 1e-3);
    EXPECT_LT(downsampled_gain<3>(kGentle, 0.47), kStopBand);
    for (const auto& [stages, cycles] : {std::pair{8, 0.05}, {8, 0.2}, {8, 0.23}, {3, 0.05}, {3, 0.1}})
    {
        const auto [tone, image] = stages == 8 ? tone_and_image<8>(kSteep, cycles) : tone_and_image<3>(kGentle, cycles);
        EXPECT_NEAR(tone, 1.0, 1e-3) << stages << " stages, " << cycles;
        EXPECT_LT(image, kStopBand) << stages << " stages, " << cycles;
    }
}

// The loop engine runs the block calls: they must give exactly what the
// per-sample calls give, with coefficients copied as floats, and after
// clear_state has forgotten what came before.
TEST(Resampler, BlockCallsAgreeWithSampleCallsAfterACopyAndAClear)
{
    const std::vector<double> coefs = design(kSteep);
    dsp::Upsampler2x<8> up_sample;
    dsp::Upsampler2x<8> up_block;
    dsp::Downsampler2x<8> down_pair;
    dsp::Downsampler2x<8> down_block;
    up_sample.load_coefs(coefs);
    up_block.load_coefs(coefs);
    down_pair.load_coefs(coefs);
    float as_float[8];
    for (int i = 0; i < 8; ++i)
    {
        as_float[i] = down_pair.get_coef(i);
        up_sample.upsample(0.7f);
        down_pair.downsample_pair(0.7f, -0.2f);
    }
    up_sample.clear_state();
    down_pair.clear_state();
    dsp::Downsampler2xInterface& down = down_block;
    down.copy_coefs(as_float);

    const std::vector<float> in = zq_test::Noise().take(256);
    std::vector<float> twice(512);
    std::vector<float> once(256);
    up_block.upsample_block(in.data(), twice.data(), 256);
    down.downsample_block(once.data(), twice.data(), 256);
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        const auto u = up_sample.upsample(in[i]);
        ASSERT_EQ(u[0], twice[2 * i]) << i;
        ASSERT_EQ(u[1], twice[2 * i + 1]) << i;
        ASSERT_EQ(once[i], down_pair.downsample_pair(u[0], u[1])) << i;
    }
}

// Missing coefficients and ones outside [0, 1) still make stable stages.
TEST(Resampler, ShortOrBrokenCoefficientListsStayStable)
{
    dsp::Upsampler2x<8> up;
    up.load_coefs({0.5, std::nan(""), 7.0});
    dsp::Downsampler2x<8> down;
    down.load_coefs({-3.0});
    for (int i = 0; i < 8; ++i)
    {
        EXPECT_GE(up.get_coef(i), 0.0f);
        EXPECT_LT(up.get_coef(i), 1.0f);
        EXPECT_GE(down.get_coef(i), 0.0f);
    }
    float peak = 0.0f;
    for (int i = 0; i < 10000; ++i)
    {
        const auto u = up.upsample((i % 2) != 0 ? 1.0f : -1.0f);
        peak = std::max({peak, std::fabs(u[0]), std::fabs(u[1]), std::fabs(down.downsample_pair(u[0], u[1]))});
    }
    EXPECT_LT(peak, 4.0f);
}

}  // namespace
