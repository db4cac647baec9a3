#include "tools/soundcheck/SoundProfile.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <iomanip>

namespace soundcheck
{
namespace
{

constexpr double kPi = 3.14159265358979323846;
// Spectrum frames of 16384 samples resolve 2.7 Hz at 44.1 kHz: the lowest
// third octave (45 to 56 Hz) still spans four bins.
constexpr std::size_t kFftSize = 16384;
constexpr int kLowestBand = -13;  // 1000 x 2^(-13/3) = 50 Hz
constexpr int kHighestBand = 12;  // 1000 x 2^(12/3) = 16 kHz
// The envelope is compared just before and just after each grid point; 25 ms
// covers the few samples of latency any resampler adds.
constexpr double kOnsetWindowSeconds = 0.025;
constexpr double kOnsetRiseDb = 6.0;
constexpr double kNoOnsetRiseDb = 2.0;

double to_db(double mean_square)
{
    const double floor_power = std::pow(10.0, SoundProfile::floor_db / 10.0);
    return 10.0 * std::log10(std::max(mean_square, floor_power));
}

// In-place radix-2 transform; the size is a power of two.
void fft(std::vector<std::complex<double>>& x)
{
    const std::size_t n = x.size();
    for (std::size_t i = 1, j = 0; i < n; ++i)
    {
        std::size_t bit = n >> 1;
        for (; (j & bit) != 0; bit >>= 1)
        {
            j ^= bit;
        }
        j ^= bit;
        if (i < j)
        {
            std::swap(x[i], x[j]);
        }
    }
    for (std::size_t len = 2; len <= n; len <<= 1)
    {
        const std::complex<double> step = std::polar(1.0, -2.0 * kPi / static_cast<double>(len));
        for (std::size_t start = 0; start < n; start += len)
        {
            std::complex<double> w = 1.0;
            for (std::size_t k = 0; k < len / 2; ++k)
            {
                const std::complex<double> odd = w * x[start + k + len / 2];
                x[start + k + len / 2] = x[start + k] - odd;
                x[start + k] += odd;
                w *= step;
            }
        }
    }
}

// Welch's average of Hann-windowed frames overlapping by half, over all
// channels, scaled so that the bins of a signal sum to its mean square.
std::vector<double> power_spectrum(const std::vector<const float*>& channels, std::size_t frames)
{
    std::vector<double> window(kFftSize);
    double window_power = 0.0;
    for (std::size_t i = 0; i < kFftSize; ++i)
    {
        window[i] = 0.5 - 0.5 * std::cos(2.0 * kPi * static_cast<double>(i) / kFftSize);
        window_power += window[i] * window[i];
    }
    std::vector<double> power(kFftSize / 2, 0.0);
    std::vector<std::complex<double>> buffer(kFftSize);
    int count = 0;
    for (const float* channel : channels)
    {
        for (std::size_t start = 0; start + kFftSize <= frames; start += kFftSize / 2)
        {
            for (std::size_t i = 0; i < kFftSize; ++i)
            {
                const double x = channel[start + i];
                buffer[i] = std::isfinite(x) ? x * window[i] : 0.0;
            }
            fft(buffer);
            for (std::size_t k = 1; k < kFftSize / 2; ++k)
            {
                power[k] += 2.0 * std::norm(buffer[k]) / (kFftSize * window_power);
            }
            ++count;
        }
    }
    for (double& p : power)
    {
        p /= std::max(count, 1);
    }
    return power;
}

std::vector<double> band_levels(const std::vector<double>& power, double sample_rate)
{
    std::vector<double> levels;
    const double bin_hz = sample_rate / kFftSize;
    for (double centre : SoundProfile::get_band_centres())
    {
        const double low = centre * std::pow(2.0, -1.0 / 6.0);
        const double high = centre * std::pow(2.0, 1.0 / 6.0);
        double sum = 0.0;
        for (std::size_t k = 1; k < power.size(); ++k)
        {
            const double f = static_cast<double>(k) * bin_hz;
            if (f >= low && f < high)
            {
                sum += power[k];
            }
        }
        levels.push_back(to_db(sum));
    }
    return levels;
}

// Mean square over [begin, end) of all channels, ends clipped to the render.
double window_power(const std::vector<const float*>& channels, long begin, long end, std::size_t frames)
{
    begin = std::max(begin, 0L);
    end = std::min(end, static_cast<long>(frames));
    double sum = 0.0;
    for (const float* channel : channels)
    {
        for (long i = begin; i < end; ++i)
        {
            const double x = channel[i];
            sum += std::isfinite(x) ? x * x : 0.0;
        }
    }
    const long n = std::max(end - begin, 1L) * static_cast<long>(std::max<std::size_t>(channels.size(), 1));
    return sum / static_cast<double>(n);
}

std::string onset_grid(const std::vector<const float*>& channels, std::size_t frames, double sample_rate, double tempo)
{
    const double sixteenth = sample_rate * 60.0 / tempo / 4.0;
    const auto window = static_cast<long>(std::lround(kOnsetWindowSeconds * sample_rate));
    std::string grid;
    for (int k = 0; k * sixteenth + static_cast<double>(window) <= static_cast<double>(frames); ++k)
    {
        const auto at = static_cast<long>(std::lround(k * sixteenth));
        const double before = to_db(window_power(channels, at - window, at, frames));
        const double after = to_db(window_power(channels, at, at + window, frames));
        const double rise = after - before;
        grid += rise >= kOnsetRiseDb ? SoundProfile::onset
              : rise < kNoOnsetRiseDb ? SoundProfile::no_onset
                                      : SoundProfile::unclear;
    }
    return grid;
}

}  // namespace

std::vector<double> SoundProfile::get_band_centres()
{
    std::vector<double> centres;
    for (int n = kLowestBand; n <= kHighestBand; ++n)
    {
        centres.push_back(1000.0 * std::pow(2.0, n / 3.0));
    }
    return centres;
}

SoundProfile SoundProfile::analyse(const std::vector<const float*>& channels, std::size_t frames, double sample_rate,
                                   double tempo)
{
    SoundProfile profile;
    double sum = 0.0;
    for (const float* channel : channels)
    {
        for (std::size_t i = 0; i < frames; ++i)
        {
            const float x = channel[i];
            profile.nan_count += std::isnan(x) ? 1 : 0;
            profile.inf_count += std::isinf(x) ? 1 : 0;
            profile.subnormal_count += std::fpclassify(x) == FP_SUBNORMAL ? 1 : 0;
            sum += std::isfinite(x) ? static_cast<double>(x) * x : 0.0;
        }
    }
    const std::size_t samples = std::max<std::size_t>(frames * channels.size(), 1);
    profile.rms_db = to_db(sum / static_cast<double>(samples));
    profile.band_db = band_levels(power_spectrum(channels, frames), sample_rate);
    profile.onsets = onset_grid(channels, frames, sample_rate, tempo);
    return profile;
}

void SoundProfile::print(std::ostream& out) const
{
    out << std::fixed << std::setprecision(2) << "{" << rms_db << ", {";
    for (std::size_t i = 0; i < band_db.size(); ++i)
    {
        out << (i == 0 ? "" : ", ") << band_db[i];
    }
    out << "}, \"" << onsets << "\"}";
}

}  // namespace soundcheck
