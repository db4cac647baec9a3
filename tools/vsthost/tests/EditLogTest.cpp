#include "tools/vsthost/EditLog.h"
#include "tools/vsthost/LoopingSource.h"

#include <gtest/gtest.h>

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

TEST(LoopingSource, AMissingFileIsAnError)
{
    EXPECT_THROW(vsthost::LoopingSource("/no/such/file.wav", 44100.0, 120.0), std::runtime_error);
}

}  // namespace
