#include "zarquette/SampleSet.h"
#include "zarquette/WavFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <vector>

namespace
{

// The shipped recordings, checked as a whole: that every name of both sets is
// there in the one accepted format, that the collection has the rates and
// lengths it is known for, and that each is faded and levelled alike.

using zarquette::SampleSet;
using zarquette::WavFile;

struct Loaded
{
    const char* name;
    int group;
    WavFile wav;
};

std::vector<Loaded> load_set(const SampleSet& set)
{
    std::vector<Loaded> out;
    for (int i = 0; i < set.size; ++i)
    {
        Loaded l{set.entries[i].name, set.entries[i].group, {}};
        EXPECT_EQ(l.wav.load(l.name), 0) << l.name;
        out.push_back(l);
    }
    return out;
}

std::vector<Loaded> load_all()
{
    std::vector<Loaded> all = load_set(SampleSet::get_cats());
    const std::vector<Loaded> voices = load_set(SampleSet::get_voices());
    all.insert(all.end(), voices.begin(), voices.end());
    return all;
}

double sample(const WavFile& w, std::size_t i)
{
    return w.use_samples()[i] / 32768.0;
}

double peak_db(const WavFile& w)
{
    double peak = 0.0;
    for (std::size_t i = 0; i < w.get_nbr_frames(); ++i)
    {
        peak = std::max(peak, std::fabs(sample(w, i)));
    }
    return 20.0 * std::log10(peak);
}

double mean(const WavFile& w)
{
    double sum = 0.0;
    for (std::size_t i = 0; i < w.get_nbr_frames(); ++i)
    {
        sum += sample(w, i);
    }
    return sum / w.get_nbr_frames();
}

TEST(WavFileRecordings, AllLoadWithTheCollectionsRatesAndLengths)
{
    const std::vector<Loaded> all = load_all();
    ASSERT_EQ(all.size(), 252u);
    std::map<int, int> rates;
    std::uint32_t shortest = ~0u, longest = 0;
    for (const Loaded& l : all)
    {
        ++rates[static_cast<int>(l.wav.get_sample_freq())];
        shortest = std::min(shortest, l.wav.get_nbr_frames());
        longest = std::max(longest, l.wav.get_nbr_frames());
    }
    const std::map<int, int> expected = {{22050, 182}, {16000, 34}, {11025, 26}, {8000, 4},
                                         {16168, 3},   {25033, 1},  {44100, 1},  {48000, 1}};
    EXPECT_EQ(rates, expected);
    EXPECT_EQ(shortest, 2697u);
    EXPECT_EQ(longest, 72028u);
}

TEST(WavFileRecordings, PeaksNearMinusSixDbWithoutOffsetOrClicks)
{
    for (const Loaded& l : load_all())
    {
        const WavFile& w = l.wav;
        const double peak = peak_db(w);
        EXPECT_GT(peak, -7.0) << l.name;
        EXPECT_LT(peak, -5.0) << l.name;
        EXPECT_LT(std::fabs(mean(w)), 2e-3) << l.name;
        // Faded in and out: playback starts and ends at silence.
        EXPECT_LT(std::fabs(sample(w, 0)), 1e-3) << l.name;
        EXPECT_LT(std::fabs(sample(w, w.get_nbr_frames() - 1)), 1e-3) << l.name;
    }
}

}  // namespace
