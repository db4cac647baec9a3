#include "dsp/Downsampler2x.h"
#include "dsp/HalfBandDesign.h"
#include "dsp/Upsampler2x.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <vector>

namespace
{

constexpr double kPi = 3.14159265358979323846;

std::vector<double> design(double transition)
{
    std::vector<double> coefs;
    dsp::design_half_band(coefs, 69.0, transition);
    return coefs;
}

template <int N>
struct Pair
{
    explicit Pair(double transition)
    {
        up.load_coefs(design(transition));
        down.load_coefs(design(transition));
    }
    dsp::Upsampler2x<N> up;
    dsp::Downsampler2x<N> down;
};

// Gain of the downsampler for a sine of `cycles_per_sample` at its input rate,
// from the RMS of the settled output (a peak would depend on where the output
// samples fall on the wave).
template <int N>
double downsampled_gain(dsp::Downsampler2x<N>& down, double cycles_per_sample)
{
    double sum = 0.0;
    const int pairs = 20000;
    for (int i = 0; i < pairs; ++i)
    {
        const float in0 = static_cast<float>(std::sin(2.0 * kPi * cycles_per_sample * (2 * i)));
        const float in1 = static_cast<float>(std::sin(2.0 * kPi * cycles_per_sample * (2 * i + 1)));
        const double y = down.downsample_pair(in0, in1);
        if (i >= pairs / 2)
        {
            sum += y * y;
        }
    }
    return std::sqrt(2.0 * sum / (pairs - pairs / 2));
}

TEST(Resampler, SteepDownsamplerPassesTheBandAndRejectsItsImage)
{
    // Rates relative to the downsampler's input: the pass band ends just below a
    // quarter, the stop band starts just above it.
    Pair<8> pass(0.01);
    EXPECT_NEAR(downsampled_gain(pass.down, 0.1), 1.0, 1e-4);
    EXPECT_NEAR(downsampled_gain(pass.down, 0.23), 1.0, 1e-3);
    Pair<8> stop(0.01);
    EXPECT_LT(downsampled_gain(stop.down, 0.3), std::pow(10.0, -65.0 / 20.0));
    Pair<3> gentle(0.2);
    EXPECT_LT(downsampled_gain(gentle.down, 0.47), std::pow(10.0, -65.0 / 20.0));
}

TEST(Resampler, UpThenDownReturnsTheSignalDelayed)
{
    Pair<8> p(0.01);
    std::vector<float> in;
    std::vector<float> out;
    for (int i = 0; i < 4000; ++i)
    {
        const float x = static_cast<float>(std::sin(2.0 * kPi * 0.05 * i));
        const auto up = p.up.upsample(x);
        in.push_back(x);
        out.push_back(p.down.downsample_pair(up[0], up[1]));
    }
    // Find the delay (a few samples) and check the match after it.
    int best_lag = 0;
    double best_err = 1e9;
    for (int lag = 0; lag < 20; ++lag)
    {
        double err = 0.0;
        for (int i = 2000; i < 4000; ++i)
        {
            err = std::max(err, std::fabs(static_cast<double>(out[i]) - in[i - lag]));
        }
        if (err < best_err)
        {
            best_err = err;
            best_lag = lag;
        }
    }
    EXPECT_GT(best_lag, 0);
    // All-pass phase is not linear, so a whole-sample lag matches only roughly.
    EXPECT_LT(best_err, 0.35);
    double sum = 0.0;
    for (int i = 2000; i < 4000; ++i)
    {
        sum += static_cast<double>(out[i]) * out[i];
    }
    EXPECT_NEAR(std::sqrt(sum / 1000.0), 1.0, 1e-3);
}

TEST(Resampler, DecayFlushedPerBlockEndsInExactZero)
{
    // Without flush-to-zero, as in a caller that does not come through the
    // host's entry: flushing once per block keeps the states normal.
    Pair<3> p(0.2);
    p.up.upsample(1.0f);
    p.down.downsample_pair(1.0f, -1.0f);
    std::array<float, 2> u{};
    float d = 1.0f;
    for (int block = 0; block < 80; ++block)
    {
        for (int i = 0; i < 256; ++i)
        {
            u = p.up.upsample(0.0f);
            d = p.down.downsample_pair(0.0f, 0.0f);
        }
        p.up.flush_state();
        p.down.flush_state();
        ASSERT_TRUE(p.up.state_is_normal()) << block;
        ASSERT_TRUE(p.down.state_is_normal()) << block;
    }
    EXPECT_EQ(u[0], 0.0f);
    EXPECT_EQ(u[1], 0.0f);
    EXPECT_EQ(d, 0.0f);
}

TEST(Resampler, ClearStateForgetsThePast)
{
    Pair<8> p(0.01);
    for (int i = 0; i < 100; ++i)
    {
        p.up.upsample(0.7f);
        p.down.downsample_pair(0.7f, -0.2f);
    }
    p.up.clear_state();
    p.down.clear_state();
    EXPECT_EQ(p.up.upsample(0.0f)[0], 0.0f);
    EXPECT_EQ(p.down.downsample_pair(0.0f, 0.0f), 0.0f);
}

TEST(Resampler, BlockPairAndCoefficientCopyAgree)
{
    const std::vector<double> coefs = design(0.01);
    dsp::Downsampler2x<8> by_pair;
    by_pair.load_coefs(coefs);
    float as_float[8];
    for (int i = 0; i < 8; ++i)
    {
        as_float[i] = by_pair.get_coef(i);
    }
    dsp::Downsampler2x<8> by_block;
    dsp::Downsampler2xInterface& iface = by_block;
    iface.copy_coefs(as_float);

    std::vector<float> in(512);
    for (std::size_t i = 0; i < in.size(); ++i)
    {
        in[i] = static_cast<float>(std::sin(0.37 * static_cast<double>(i)));
    }
    std::vector<float> out(256);
    iface.downsample_block(out.data(), in.data(), 256);
    for (int i = 0; i < 256; ++i)
    {
        ASSERT_EQ(out[static_cast<std::size_t>(i)], by_pair.downsample_pair(in[2 * static_cast<std::size_t>(i)],
                                                                             in[2 * static_cast<std::size_t>(i) + 1]));
    }
}

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

// The images the upsampler must keep out of the doubled band.

// Amplitude of the upsampled sine and of its image (mirrored about the input
// rate's Nyquist), from a window holding a whole number of cycles of both.
template <int N>
std::pair<double, double> tone_and_image(double transition, double cycles_per_input_sample)
{
    dsp::Upsampler2x<N> up;
    up.load_coefs(design(transition));
    const int settle = 4000;
    const int window = 2000;  // output samples
    const double tone = cycles_per_input_sample / 2.0;
    const double image = 0.5 - tone;
    std::complex<double> at_tone;
    std::complex<double> at_image;
    for (int i = 0; i < settle + window / 2; ++i)
    {
        const auto y = up.upsample(static_cast<float>(std::sin(2.0 * kPi * cycles_per_input_sample * i)));
        if (i < settle)
        {
            continue;
        }
        for (int k = 0; k < 2; ++k)
        {
            const int n = 2 * (i - settle) + k;
            at_tone += static_cast<double>(y[static_cast<std::size_t>(k)]) * std::polar(1.0, -2.0 * kPi * tone * n);
            at_image += static_cast<double>(y[static_cast<std::size_t>(k)]) * std::polar(1.0, -2.0 * kPi * image * n);
        }
    }
    return {2.0 * std::abs(at_tone) / window, 2.0 * std::abs(at_image) / window};
}

TEST(Resampler, UpsamplerKeepsTheToneAndRejectsItsImage)
{
    const double floor = std::pow(10.0, -65.0 / 20.0);
    for (double f : {0.05, 0.2, 0.23})
    {
        const auto steep = tone_and_image<8>(0.01, f);
        EXPECT_NEAR(steep.first, 1.0, 1e-3) << f;
        EXPECT_LT(steep.second, floor) << f;
    }
    for (double f : {0.05, 0.1})
    {
        const auto gentle = tone_and_image<3>(0.2, f);
        EXPECT_NEAR(gentle.first, 1.0, 1e-3) << f;
        EXPECT_LT(gentle.second, floor) << f;
    }
}

}  // namespace
