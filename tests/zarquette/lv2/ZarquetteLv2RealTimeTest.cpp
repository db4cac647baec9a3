#include "Lv2Rig.h"
#include "tests/zarquette/AllocationCounter.h"

#include "lumo/lv2/Lv2LearnKeys.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "sys/ClockPin.h"

#include <lv2/atom/atom.h>

#include <gtest/gtest.h>

#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using zq_test::Lv2Rig;

// Blocks with everything a host sends: control changes, MIDI mapped to
// parameters, tempo changes, an editor's learn that each block's controllers
// complete and that is reported, and the echo of a program on its way out.
class ZarquetteLv2RealTime : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // The echo goes to the host's output.
        ASSERT_EQ(rig.plugin().use_midi_dispatcher()->select_output(0), 0);
        ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
        const auto key = [this](const char* fragment) { return map.id(std::string(zarquette::lv2_uri) + fragment); };
        events.object(0, zq_test::ObjectBytes(key(lumo::lv2_learn_key::bindings_get)));
        events.object(0, zq_test::ObjectBytes(key(lumo::lv2_learn_key::learn_start))
                             .property(key(lumo::lv2_learn_key::parameter), map.id(LV2_ATOM__Int), std::int32_t{1}));
        for (int f = 0; f < 256; f += 16)
        {
            events.nrpn(f, 4, f * 64).tempo(f + 8, 100.0f + static_cast<float>(f));
        }
        rig.send(events);
        rig.feed(0.25f, 0.0f);
    }

    // Blocks whose controls move.
    void play(int blocks)
    {
        for (int b = 0; b < blocks; ++b)
        {
            rig.control("vin_rouge") = static_cast<float>(b % 100);
            rig.control("nuclear_power") = static_cast<float>(b % 2);
            rig.run(256);
            clock.advance(0.1);
        }
    }

    sys::ClockPin clock{100.0};
    zq_test::UridMap map;
    Lv2Rig rig{map};
    zq_test::StateStore state;
    zq_test::Lv2Input events = rig.input();
};

TEST_F(ZarquetteLv2RealTime, RunAllocatesNothing)
{
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    play(1);
    ASSERT_FALSE(rig.sent_midi().empty());
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    const AllocationCounter counter;
    play(50);
    EXPECT_EQ(counter.get_count(), 0);
}

// In a child process that the kernel kills at the first system call other
// than write and exit. The pinned clock stands in for the system's clock,
// which Linux reads without a system call (through the vDSO) on the
// machines hosts run on, but not on every virtual one.
TEST_F(ZarquetteLv2RealTime, RunMakesNoSystemCall)
{
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    play(2);
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0)
    {
        if (::prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT) != 0)
        {
            ::syscall(SYS_exit, 3);
        }
        play(50);
        ::syscall(SYS_exit, 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 3)
    {
        GTEST_SKIP() << "this system does not offer strict seccomp";
    }
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0)
        << "killed by signal " << (WIFSIGNALED(status) ? WTERMSIG(status) : 0);
}

}  // namespace
