#include "Lv2Rig.h"
#include "tests/zarquette/AllocationCounter.h"
#include "tests/zarquette/ParamIndex.h"

#include "lumo/DspInterface.h"
#include "lumo/HostDspInterface.h"
#include "lumo/ProgramSlot.h"
#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2LearnKeys.h"
#include "lumo/lv2/Lv2LearnMirror.h"
#include "lumo/lv2/Lv2StateKeys.h"
#include "lumo/lv2/Lv2Urids.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"
#include "sys/ClockPin.h"
#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"
#include "zarquette/lv2/ZarquetteLv2Recipe.h"

#include <lv2/atom/util.h>

#include <gtest/gtest.h>

#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace
{

using Strings = std::vector<std::string>;
using zq_test::Lv2Rig;

using namespace zq_test::params;

class ZarquetteLv2 : public ::testing::Test
{
protected:
    sys::ClockPin clock{100.0};
    zq_test::UridMap map;
};

// The MIDI learn conversation between the editor's end (the mirror of the
// bindings it holds) and the plug-in, as its messages travel the ports.
class ZarquetteLv2Learn : public ZarquetteLv2
{
protected:
    using Request = lumo::Lv2LearnMessage::Request;
    using Requests = std::vector<std::pair<Request, int>>;

    ZarquetteLv2Learn()
    {
        urids.map_all(map.use(), "urn:velnor:zarquette");
        lv2_atom_forge_init(&forge, const_cast<LV2_URID_Map*>(map.use()));
    }

    // One block of the plug-in with the requests given, those for what the
    // editor did to the mirror and a MIDI message; the plug-in's reports go
    // to the mirror. Answers how many there were.
    int exchange(Requests asked = {}, const std::vector<std::uint8_t>& midi = {})
    {
        mirror.send_changes([&asked](Request request, int param) { asked.emplace_back(request, param); });
        zq_test::Lv2Input in = rig.input();
        for (const auto& [request, param] : asked)
        {
            alignas(8) std::uint8_t buffer[128];
            lv2_atom_forge_set_buffer(&forge, buffer, sizeof(buffer));
            EXPECT_TRUE(lumo::Lv2LearnMessage::write_request(forge, urids, request, param));
            in.atom(0, *reinterpret_cast<const LV2_Atom*>(buffer));
        }
        if (!midi.empty())
        {
            in.midi(0, midi);
        }
        rig.run(32, in);
        int reports = 0;
        LV2_ATOM_SEQUENCE_FOREACH(&rig.use_output(), e)
        {
            lumo::Lv2Event event;
            event.type = e->body.type;
            event.size = e->body.size;
            event.body = reinterpret_cast<const std::uint8_t*>(&e->body + 1);
            reports += mirror.take(lumo::Lv2AtomObject(event, urids), urids) ? 1 : 0;
        }
        return reports;
    }

    Lv2Rig rig{map};
    lumo::Lv2Urids urids;
    LV2_Atom_Forge forge{};
    lumo::Lv2LearnMirror mirror;
};

TEST_F(ZarquetteLv2Learn, WhatTheEditorDoesReachesThePluginAndThePluginsBindingsComeBack)
{
    const lumo::MidiMgr& plugin_mgr = *rig.plugin().use_midi_mgr();
    lumo::MidiMgr& editor_mgr = mirror.use_mgr();
    // Nothing is told before an editor asks, nor told twice.
    EXPECT_EQ(exchange(), 0);
    EXPECT_EQ(exchange({{Request::get_bindings, -1}}), 1);
    EXPECT_EQ(editor_mgr.get_id(vin_rouge), 99 * 65536 + vin_rouge);
    EXPECT_EQ(exchange(), 0);

    editor_mgr.set_pending_learn(oignons);
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(plugin_mgr.get_pending_learn(), oignons);
    EXPECT_EQ(exchange({}, {0xB0, 20, 127}), 1);
    EXPECT_EQ(editor_mgr.get_id(oignons), 20 * 65536);
    EXPECT_EQ(editor_mgr.get_learn_count(), plugin_mgr.get_learn_count());
    zq_test::StateStore state;
    ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
    // A cancel for a parameter that waits for nothing changes nothing.
    exchange({{Request::cancel, bof}});
    EXPECT_EQ(plugin_mgr.get_pending_learn(), oignons);
    // The menu's "Forget": disarmed and unbound on both ends.
    editor_mgr.set_pending_learn(-1);
    editor_mgr.unbind(oignons);
    EXPECT_EQ(exchange(), 1);
    EXPECT_EQ(plugin_mgr.get_pending_learn(), -1);
    EXPECT_EQ(plugin_mgr.get_id(oignons), -1);
    EXPECT_EQ(exchange(), 0);
    // A forget alone disarms too.
    editor_mgr.set_pending_learn(vin_rouge);
    exchange();
    exchange({{Request::forget, vin_rouge}});
    EXPECT_EQ(plugin_mgr.get_pending_learn(), -1);

    // A restored state is told; a request no plug-in sends is no request.
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    EXPECT_EQ(exchange({{Request::start, 256}}), 1);
    EXPECT_EQ(editor_mgr.get_id(oignons), 20 * 65536);
    EXPECT_EQ(plugin_mgr.get_pending_learn(), -1);
    exchange({{Request::start, 255}});
    EXPECT_EQ(plugin_mgr.get_pending_learn(), 255);
}

// An NRPN sweep through the atom port, then the control ports in natural units.
TEST_F(ZarquetteLv2, MidiAndControlPortsMoveTheParametersAsHostAutomation)
{
    Lv2Rig rig(map);
    rig.run(16);
    EXPECT_EQ(rig.param(gauloises), 0.0f);
    zq_test::Lv2Input sweep = rig.input();
    for (int step = 0; step < 12; ++step)
    {
        sweep.nrpn(step, gauloises, std::min(step * 1490, 16383));
    }
    rig.run(16, sweep);
    EXPECT_EQ(rig.param(gauloises), 1.0f);
    // A mapped controller holds its parameter for half a second: a control
    // change meanwhile is dropped, as VST 2 host automation is.
    rig.control("gauloises") = 30.0f;
    rig.run(64);
    EXPECT_EQ(rig.param(gauloises), 1.0f);
    clock.advance(0.6);

    rig.control("gauloises") = 80.0f;
    rig.control("tempo") = 90.0f;
    rig.control("nuclear_power") = 1.0f;
    rig.control("oignons") = 250.0f;  // beyond its range: the nearest end
    rig.control("vin_rouge") = std::numeric_limits<float>::quiet_NaN();
    rig.run(64);
    const std::vector<float> now = rig.params();
    EXPECT_FLOAT_EQ(now[tempo], 30.0f / 180.0f);
    EXPECT_EQ(std::vector<float>(now.begin() + 1, now.end()), (std::vector<float>{0.0f, 0.8f, 1.0f, 1.0f, 0.0f}));
}

// A change at frame 100 of a block sounds from frame 100: the block rendered
// whole matches the same block rendered as 100 frames, the change, and the rest.
TEST_F(ZarquetteLv2, MidiTakesEffectAtTheFrameItCarries)
{
    // The last block after a while of sound, cut after `cut` frames, the NRPN
    // at frame `at` of the part after the cut.
    const auto render = [this](std::uint32_t cut, std::int64_t at) {
        Lv2Rig rig(map);
        rig.feed(0.25f, -0.125f);
        rig.control("gauloises") = 100.0f;
        rig.control("oignons") = 100.0f;
        for (int b = 0; b < 40; ++b)
        {
            rig.run(256);
        }
        if (cut > 0)
        {
            rig.run(cut);
        }
        rig.run(256 - cut, rig.input().nrpn(at, gauloises, 0));
        return std::vector<float>(rig.out_l.begin(), rig.out_l.begin() + (256 - cut));
    };
    const std::vector<float> whole = render(0, 100);
    EXPECT_EQ(std::vector<float>(whole.begin() + 100, whole.end()), render(100, 0));
    // The change is audible at once: applied at the block's start, it gives other samples.
    EXPECT_NE(whole, render(0, 0));
}

TEST_F(ZarquetteLv2, TheHostsTempoIsFoldedIntoRangeAndWinsOverTheTempoPort)
{
    Lv2Rig rig(map);
    rig.run(64);
    // Tempos that are no tempo are no host tempo: the port keeps its say.
    for (const float bpm : {0.0f, -120.0f, std::numeric_limits<float>::quiet_NaN(),
                            std::numeric_limits<float>::infinity()})
    {
        rig.run(64, rig.input().tempo(0, bpm));
    }
    rig.control("tempo") = 90.0f;
    rig.run(64);
    EXPECT_FLOAT_EQ(rig.param(tempo), 30.0f / 180.0f);
    rig.run(64, rig.input().tempo(10, 50.0f));
    EXPECT_FLOAT_EQ(rig.param(tempo), 40.0f / 180.0f);  // 100 BPM
    rig.run(64, rig.input().tempo(0, 500.0f));
    EXPECT_FLOAT_EQ(rig.param(tempo), 65.0f / 180.0f);  // 125 BPM
    rig.control("tempo") = 200.0f;
    rig.run(64);
    EXPECT_FLOAT_EQ(rig.param(tempo), 65.0f / 180.0f);
}

// The settings file of the VST 2 build serves the LV2 build as it is: its
// controller drives the parameter, and its choice of the host's output port
// sends the echo of every program the plug-in takes to the host.
TEST_F(ZarquetteLv2, TheUsersSettingsFileBindsControllersAndSendsTheEchoToTheHost)
{
    // The user's choice in a host: autoload this file (the key store is the
    // test program's scratch one).
    zq_test::ScratchDir dir;
    sys::PersistentKeyList autoload("Velnor/Zarquette/Autoload", true);
    autoload.set_string("LatestConfigAutoload", "1");
    autoload.set_string("LatestConfigFile", dir.write_file("mine.cfg", "Zarquette_config_section = { midi = {"
        " control_map = { id_4 = cc_74 } port_out = { name = \"VST MIDI Out interface\" } } }"));
    Lv2Rig rig(map);
    autoload.set_string("LatestConfigAutoload", "0");
    EXPECT_EQ(rig.plugin().use_midi_dispatcher()->get_output_names(),
              (Strings{"LV2 MIDI Out interface", "VST MIDI Out interface"}));
    // The program of start-up, every value 0.
    rig.run(64);
    Strings sent = rig.sent_midi();
    ASSERT_EQ(sent.size(), 5u * 4u + 1u);
    EXPECT_EQ(sent[16], "B0 4A 00");

    rig.run(64, rig.input().cc(5, 74, 127));
    EXPECT_FLOAT_EQ(rig.param(oignons), 16256.0f / 16383.0f);

    // A saved program comes back as MIDI at the next block.
    zq_test::StateStore state;
    rig.control("gauloises") = 50.0f;
    rig.run(64);
    ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
    rig.control("gauloises") = 0.0f;
    rig.run(64);
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    rig.run(64);
    sent = rig.sent_midi();
    ASSERT_EQ(sent.size(), 21u);
    EXPECT_EQ(Strings(sent.begin() + 8, sent.begin() + 12), (Strings{"B0 63 00", "B0 62 02", "B0 06 40", "B0 26 00"}));
    EXPECT_EQ(sent[16], "B0 4A 7F");
    // The audio side's own changes are echoed as they are made.
    rig.plugin().use_dsp().use_host()->set_and_report_param(vin_rouge, 1.0f, 200);
    rig.run(64);
    EXPECT_EQ(rig.sent_midi(), (Strings{"B0 63 00", "B0 62 05", "B0 06 7F", "B0 26 7F"}));
    // Files of its own the plug-in would keep below its bundle.
    EXPECT_EQ(rig.plugin().get_store_path(), "/nowhere/zarquette.lv2/Velnor/Zarquette LV2");
}

// ---- Saved state ----------------------------------------------------------


class ZarquetteLv2State : public ZarquetteLv2
{
protected:
    std::uint32_t key(const char* fragment) { return map.id(std::string(zarquette::lv2_uri) + fragment); }
    std::uint32_t program_key() { return key(lumo::lv2_state_key::program); }
    std::uint32_t bindings_key() { return key(lumo::lv2_state_key::midi_bindings); }
    // Controller 20 at full scale, through the rig's input.
    static void move_cc20(Lv2Rig& rig) { rig.run(32, rig.input().cc(0, 20, 127)); }
    // A state saved from a rig whose Oignons learned controller 20.
    void save_learned(zq_test::StateStore& state)
    {
        Lv2Rig rig(map);
        rig.control("bof") = 25.0f;
        rig.control("nuclear_power") = 1.0f;
        rig.run(32);
        rig.plugin().use_midi_mgr()->set_pending_learn(4);
        move_cc20(rig);
        saved = rig.params();
        ASSERT_EQ(rig.save(state), LV2_STATE_SUCCESS);
    }

    std::vector<float> saved;
};

TEST_F(ZarquetteLv2State, TheProgramAndTheLearnedControllersComeBack)
{
    zq_test::StateStore state;
    save_learned(state);
    ASSERT_EQ(state.values.size(), 2u);
    const zq_test::StateStore::Value& program = state.values[program_key()];
    EXPECT_EQ(program.type, map.id(LV2_ATOM__Chunk));
    // The record of a VST 2 program chunk.
    lumo::ProgramSlot slot;
    ASSERT_EQ(slot.read(program.bytes.data(), program.bytes.size()), 0);
    EXPECT_EQ(slot.get_value(1), saved[1]);

    // Name and tag come back as they were kept.
    std::vector<std::uint8_t>& bytes = state.values[program_key()].bytes;
    bytes[0] = 0x12;
    bytes[3] = 0x78;
    bytes[12] = 'M';
    Lv2Rig rig(map);
    rig.run(32);
    ASSERT_EQ(rig.restore(state), LV2_STATE_SUCCESS);
    EXPECT_EQ(rig.params(), saved);
    zq_test::StateStore again;
    ASSERT_EQ(rig.save(again), LV2_STATE_SUCCESS);
    EXPECT_EQ(again.values[program_key()].bytes, bytes);
    // The learned controller drives Oignons again, and its NRPN no longer does.
    rig.control("oignons") = 10.0f;
    rig.run(32);
    EXPECT_EQ(rig.param(4), 0.1f);
    move_cc20(rig);
    EXPECT_FLOAT_EQ(rig.param(4), 16256.0f / 16383.0f);
    EXPECT_EQ(rig.plugin().use_midi_mgr()->find_param((99 << 16) + 4), -1);
    EXPECT_TRUE(rig.log.empty());
}

TEST_F(ZarquetteLv2State, AValueOfAnotherTypeSizeOrShapeChangesNothingAndIsReported)
{
    zq_test::StateStore good;
    save_learned(good);
    const std::vector<std::uint8_t> program = good.values[program_key()].bytes;
    std::vector<std::uint8_t> seven = program;
    seven[7] = 7;  // value count 7: a program of another plug-in
    seven.insert(seven.end(), 4, 0);
    struct Case
    {
        const char* what;
        std::uint32_t key;
        zq_test::StateStore::Value value;
    };
    const std::vector<Case> cases = {
        {"text", program_key(), {map.id(LV2_ATOM__String), program}},
        {"short", program_key(), {map.id(LV2_ATOM__Chunk), std::vector<std::uint8_t>(program.begin(), program.end() - 1)}},
        {"long", program_key(), {map.id(LV2_ATOM__Chunk), std::vector<std::uint8_t>(program.size() + 4, 0)}},
        {"foreign", program_key(), {map.id(LV2_ATOM__Chunk), seven}},
        {"bindings", bindings_key(), {map.id(LV2_ATOM__Chunk), {0, 0, 0, 9, 1}}},
    };
    for (const Case& c : cases)
    {
        zq_test::StateStore bad = good;
        bad.values[c.key] = c.value;
        Lv2Rig rig(map);
        rig.run(32);
        const std::vector<float> before = rig.params();
        EXPECT_NE(rig.restore(bad), LV2_STATE_SUCCESS) << c.what;
        EXPECT_EQ(rig.params(), before) << c.what;
        EXPECT_EQ(rig.plugin().use_midi_mgr()->find_param(20 << 16), -1) << c.what;
        EXPECT_NE(rig.log.find("refused"), std::string::npos) << c.what;
    }
    // A store without the plug-in's keys restores nothing and is no error.
    zq_test::StateStore empty;
    Lv2Rig rig(map);
    EXPECT_EQ(rig.restore(empty), LV2_STATE_SUCCESS);
    // Without the host's map there are no keys to save under.
    Lv2Rig bare(map, 44100.0, true);
    EXPECT_EQ(bare.save(empty), LV2_STATE_ERR_NO_FEATURE);
    EXPECT_EQ(bare.restore(good), LV2_STATE_ERR_NO_FEATURE);
}

// ---- What no host should send ----------------------------------------------


bool all_finite(const std::vector<float>& v)
{
    return std::all_of(v.begin(), v.end(), [](float x) { return std::isfinite(x); });
}

class ZarquetteLv2BadInput : public ZarquetteLv2
{
protected:
    const LV2_Descriptor& d = Lv2Rig::use_descriptor();
    const LV2_Feature* none[1] = {nullptr};
};

TEST_F(ZarquetteLv2BadInput, ARateThatIsNoRateGivesNoInstance)
{
    for (const double rate : {0.0, -44100.0, std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::infinity(), 1e300})
    {
        EXPECT_EQ(d.instantiate(&d, rate, "/nowhere/", none), nullptr) << rate;
    }
}

// A host that runs before connecting gets silence where it can be written,
// and no crash where it cannot; without a second channel the effect runs
// mono. (Connected whole it is stereo: the end-to-end render is the VST 2
// build's, channel for channel.)
TEST_F(ZarquetteLv2BadInput, UnconnectedPortsGiveSilenceAndAMissingSecondChannelMono)
{
    LV2_Handle h = d.instantiate(&d, 44100.0, "/nowhere/", none);
    ASSERT_NE(h, nullptr);
    d.activate(h);
    d.run(h, 64);
    std::vector<float> in_l(64, 0.5f), out_l(64, 7.0f), out_r(64, 7.0f);
    d.connect_port(h, 2, out_l.data());
    d.connect_port(h, 3, out_r.data());
    d.run(h, 64);
    EXPECT_EQ(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, out_l);
    d.connect_port(h, 0, in_l.data());
    d.connect_port(h, 3, nullptr);
    out_r.assign(64, 7.0f);
    // A port the plug-in does not have, just past its last one, is no port.
    d.connect_port(h, static_cast<lumo::Lv2Plugin*>(h)->use_layout().get_atom_out() + 1, out_r.data());
    for (int b = 0; b < 20; ++b)
    {
        d.run(h, 64);
    }
    EXPECT_TRUE(all_finite(out_l));
    EXPECT_NE(out_l, std::vector<float>(64, 0.0f));
    EXPECT_EQ(out_r, std::vector<float>(64, 7.0f));
    d.deactivate(h);
    d.cleanup(h);
}

// NRPN 2 selected, then data entry cut short, in running status, as SysEx,
// empty and as a type no MIDI event has: Gauloises must not move; a whole
// one does. A block longer than any the host announced is rendered whole.
TEST_F(ZarquetteLv2BadInput, MidiThatIsNoChannelMessageOrIsCutShortIsSkippedAndLongBlocksRun)
{
    Lv2Rig rig(map, 44100.0, false, 100000);
    zq_test::Lv2Input junk = rig.input();
    junk.cc(0, 99, 0).cc(0, 98, 2).midi(1, {0xB0, 6}).midi(2, {6, 127}).midi(3, {0xF0, 0xB0, 6, 127, 0xF7});
    junk.event(4, map.id(LV2_ATOM__Chunk), {0xB0, 6, 127});
    junk.midi(5, {});
    rig.run(64, junk);
    EXPECT_EQ(rig.param(2), 0.0f);
    rig.run(64, rig.input().midi(0, {0xB0, 6, 127, 0xFF}));
    EXPECT_GT(rig.param(2), 0.99f);

    rig.feed(0.25f, 0.25f);
    rig.run(100000);
    EXPECT_TRUE(all_finite(rig.out_l));
}

// ---- Real time ------------------------------------------------------------


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
