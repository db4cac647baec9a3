#include "tools/vsthost/EditLog.h"
#include "tools/vsthost/LoopingSource.h"
#include "tools/vsthost/WavWriter.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>

namespace
{

using lumo::vst2::HostOp;

TEST(EditLog, PrintsGestureEdgesAndOneLinePerRunOfAutomation)
{
    vsthost::EditLog log;
    log.add(HostOp::begin_edit, 1, 0.0f);
    for (float v : {0.25f, 0.5f, 0.75f})
    {
        log.add(HostOp::automate, 1, v);
    }
    log.add(HostOp::automate, 2, 1.0f);
    log.add(HostOp::automate, 1, 0.125f);
    log.add(HostOp::end_edit, 1, 0.0f);
    std::ostringstream out;
    log.print(out);
    EXPECT_EQ(out.str(),
              "edits seen by the host: 7\n"
              "  begin edit 1\n"
              "  automate 1: 3 times, last 0.75\n"
              "  automate 2: 1 time, last 1\n"
              "  automate 1: 1 time, last 0.125\n"
              "  end edit 1\n");
    EXPECT_EQ(log.get_entries().size(), 7u);
}

TEST(LoopingSource, TheDemoSongStartsAgainWhereItEnds)
{
    // A slow rate keeps the song short: it repeats within a few blocks.
    const double rate = 8000.0;
    vsthost::DemoSong song(rate, 240.0);
    const std::size_t length = static_cast<std::size_t>(song.get_frame_count());
    vsthost::LoopingSource source("", rate, 240.0);
    vsthost::AudioBuffers first(2, length);
    vsthost::AudioBuffers again(2, length);
    source.read(first, length);
    source.read(again, length);
    for (std::size_t i = 0; i < length; i += 97)
    {
        ASSERT_EQ(first.use_channel(0)[i], again.use_channel(0)[i]) << i;
    }
}

// A mono 32-bit float WAV file with these samples, in the temporary folder.
std::string write_mono_wav(const std::string& name, const std::vector<float>& samples)
{
    const std::string path = ::testing::TempDir() + name;
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    vsthost::WavWriter writer(file, 1, 8000, vsthost::WavWriter::Format::float32);
    const float* channels[1] = {samples.data()};
    writer.write(channels, samples.size());
    EXPECT_TRUE(writer.finish());
    return path;
}

TEST(LoopingSource, AFileStartsAgainWithinABlockAndAnEmptyOneIsSilence)
{
    const std::string path = write_mono_wav("vsthost-loop.wav", {0.1f, 0.2f, 0.3f});
    vsthost::LoopingSource source(path, 44100.0, 120.0);
    EXPECT_EQ(source.get_channels(), 1);
    EXPECT_EQ(source.get_sample_rate(), 8000.0);
    vsthost::AudioBuffers block(1, 5);
    source.read(block, 5);
    const std::vector<float> first(block.use_channel(0), block.use_channel(0) + 5);
    EXPECT_EQ(first, (std::vector<float>{0.1f, 0.2f, 0.3f, 0.1f, 0.2f}));
    source.read(block, 2);
    EXPECT_EQ(block.use_channel(0)[0], 0.3f);
    EXPECT_EQ(block.use_channel(0)[1], 0.1f);

    const std::string empty = write_mono_wav("vsthost-empty.wav", {});
    vsthost::LoopingSource nothing(empty, 44100.0, 120.0);
    block.use_channel(0)[0] = 1.0f;
    nothing.read(block, 5);
    EXPECT_EQ(block.use_channel(0)[0], 0.0f);
    std::remove(path.c_str());
    std::remove(empty.c_str());
}

TEST(LoopingSource, AMissingFileIsAnError)
{
    EXPECT_THROW(vsthost::LoopingSource("/no/such/file.wav", 44100.0, 120.0), std::runtime_error);
}

}  // namespace
