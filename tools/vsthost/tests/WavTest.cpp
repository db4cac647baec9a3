#include "tools/vsthost/WavReader.h"
#include "tools/vsthost/WavWriter.h"
#include "tests/support/Riff.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>

namespace
{

using vsthost::WavReader;
using vsthost::WavWriter;

std::string write_wav(WavWriter::Format format, const std::vector<float>& left, const std::vector<float>& right)
{
    std::stringstream s;
    WavWriter w(s, 2, 48000, format);
    const float* channels[2] = {left.data(), right.data()};
    w.write(channels, left.size());
    EXPECT_TRUE(w.finish());
    return s.str();
}

std::vector<std::vector<float>> read_all(const std::string& bytes, int& channels, double& rate)
{
    std::istringstream in(bytes);
    WavReader r(in);
    channels = r.get_channels();
    rate = r.get_sample_rate();
    std::vector<std::vector<float>> out(static_cast<std::size_t>(channels), std::vector<float>(4096));
    std::vector<float*> ptrs;
    for (auto& c : out)
    {
        ptrs.push_back(c.data());
    }
    const std::size_t n = r.read(ptrs.data(), 4096);
    EXPECT_EQ(r.read(ptrs.data(), 4096), 0u);
    for (auto& c : out)
    {
        c.resize(n);
    }
    return out;
}

using zq_test::Bytes;
using zq_test::chunk;

// A RIFF WAVE file of these chunks, as the reader's stream sees it.
std::string riff(std::initializer_list<Bytes> chunks)
{
    const Bytes b = zq_test::riff(chunks);
    return std::string(b.begin(), b.end());
}

// The format chunk of a file at 44.1 kHz.
Bytes fmt(unsigned format, unsigned channels, unsigned bits, std::size_t extra = 0)
{
    return zq_test::fmt(format, channels, 44100, channels * bits / 8, bits, extra);
}

Bytes bytes(const std::string& text)
{
    return Bytes(text.begin(), text.end());
}

TEST(Wav, FloatFilesRoundTripExactly)
{
    const std::vector<float> l = {0.0f, 0.5f, -1.0f, 1.5f, 1e-30f};
    const std::vector<float> r = {0.25f, -0.25f, 0.125f, -2.0f, 0.0f};
    int channels = 0;
    double rate = 0;
    const auto back = read_all(write_wav(WavWriter::Format::float32, l, r), channels, rate);
    EXPECT_EQ(channels, 2);
    EXPECT_EQ(rate, 48000.0);
    EXPECT_EQ(back[0], l);
    EXPECT_EQ(back[1], r);
}

TEST(Wav, Pcm16RoundsClipsAndSilencesNan)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::vector<float> l = {0.5f, 2.0f, -3.0f, nan};
    const std::vector<float> r = {-0.5f, 1.0f, -1.0f, 0.0f};
    const std::string bytes = write_wav(WavWriter::Format::pcm16, l, r);
    EXPECT_EQ(bytes.size(), 44u + 16u);
    int channels = 0;
    double rate = 0;
    const auto back = read_all(bytes, channels, rate);
    EXPECT_NEAR(back[0][0], 0.5f, 1.0f / 32768);
    EXPECT_NEAR(back[0][1], 32767.0f / 32768, 1e-7);
    EXPECT_NEAR(back[0][2], -32767.0f / 32768, 1e-7);
    EXPECT_EQ(back[0][3], 0.0f);
    EXPECT_NEAR(back[1][0], -0.5f, 1.0f / 32768);
}

TEST(Wav, ReadsOtherFormatsAndSkipsUnknownChunks)
{
    // 24-bit mono behind an odd-sized chunk that carries a pad byte.
    const std::string data24 = std::string("\x00\x00\x40", 3) + std::string("\x00\x00\xC0", 3);
    const auto back24 = [&] {
        int c = 0;
        double r = 0;
        return read_all(riff({chunk("LIST", bytes("abc")), fmt(1, 1, 24), chunk("data", bytes(data24))}), c, r);
    }();
    ASSERT_EQ(back24[0].size(), 2u);
    EXPECT_EQ(back24[0][0], 0.5f);
    EXPECT_EQ(back24[0][1], -0.5f);

    // 8-bit unsigned and the extensible header naming float.
    int c = 0;
    double r = 0;
    EXPECT_EQ(read_all(riff({fmt(1, 1, 8), chunk("data", Bytes{0x80, 0xC0})}), c, r)[0][1], 0.5f);
    Bytes ext = fmt(0xFFFE, 1, 32, 10);
    ext[8 + 24] = 3;  // the sub-format: float
    EXPECT_EQ(read_all(riff({ext, chunk("data", Bytes{0, 0, 0x80, 0x3F})}), c, r)[0][0], 1.0f);
}

TEST(Wav, DataClaimingMoreThanTheFileEndsWithTheFile)
{
    int c = 0;
    double r = 0;
    const auto back = read_all(riff({fmt(1, 1, 16), chunk("data", Bytes{0x00, 0x40, 0x00, 0x20}, 1000)}), c, r);
    ASSERT_EQ(back[0].size(), 2u);
    EXPECT_EQ(back[0][0], 0.5f);
}

TEST(Wav, RefusesWhatItCannotRead)
{
    for (const std::string& bad : {std::string("RIFX0000WAVE"), riff({fmt(2, 1, 4), chunk("data", {})}),
                                   riff({chunk("data", Bytes{0, 0}), fmt(1, 1, 16)}), riff({fmt(1, 1, 16)}),
                                   riff({fmt(1, 0, 16)})})
    {
        std::istringstream in(bad);
        EXPECT_THROW(WavReader r(in), std::runtime_error);
    }
}

}  // namespace
