// The upsampler against a plain model of its two all-pass paths, and the images
// it must keep out of the doubled band.
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

// Path A chains the stages of the even coefficients, path B the odd ones, each
// in rising order; the first output is A's, the second B's.
template <int N>
class UpsamplerModel
{
public:
    explicit UpsamplerModel(const std::vector<double>& coefs)
    {
        for (int i = 0; i < N; ++i)
        {
            _coef[i] = static_cast<float>(coefs[static_cast<std::size_t>(i)]);
        }
    }

    std::array<float, 2> upsample(float x) { return {run(0, x), run(1, x)}; }

private:
    float run(int first, float x)
    {
        for (int i = first; i < N; i += 2)
        {
            const float y = (x - _y[i]) * _coef[i] + _x[i];
            _x[i] = x;
            _y[i] = y;
            x = y;
        }
        return x;
    }

    float _coef[N] = {};
    float _x[N] = {};
    float _y[N] = {};
};

template <int N>
void expect_model_order(double transition)
{
    const std::vector<double> coefs = design(transition);
    dsp::Upsampler2x<N> up;
    up.load_coefs(coefs);
    UpsamplerModel<N> model(coefs);
    std::uint32_t noise = 3u;
    for (int i = 0; i < 5000; ++i)
    {
        noise = noise * 1664525u + 1013904223u;
        const float x = static_cast<float>(noise >> 8) * (2.0f / 16777216.0f) - 1.0f;
        const auto got = up.upsample(x);
        const auto want = model.upsample(x);
        ASSERT_EQ(got[0], want[0]) << "first output, sample " << i;
        ASSERT_EQ(got[1], want[1]) << "second output, sample " << i;
    }
}

TEST(Upsampler, PathsRunInTheirOrderExactly)
{
    expect_model_order<8>(0.01);
    expect_model_order<3>(0.2);
}

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

TEST(Upsampler, KeepsTheToneAndRejectsItsImage)
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
