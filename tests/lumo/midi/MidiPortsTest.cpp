#include "tests/lumo/midi/FakeMidiDriver.h"
#include "tests/lumo/midi/MidiRecorder.h"

#include "basic/ConfKeyFactory.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/midi/MciMidiDevSelComp.h"
#include "lumo/midi/MciMidiOut.h"
#include "lumo/midi/MidiDevSelDispatcher.h"
#include "lumo/midi/MidiMgr.h"

#include <gtest/gtest.h>

namespace
{

using Strings = std::vector<std::string>;

// The host's side as the adapter adds it: one input and one output, always there.
class HostPorts : public lumo::MidiDevSelCompInterface
{
public:
    int list_inputs(Strings& names) override
    {
        names.push_back("Host In");
        return 0;
    }
    int list_outputs(Strings& names) override
    {
        names.push_back("Host Out");
        return 0;
    }
    int open_input(int index, lumo::MidiInInterface*& device) override
    {
        device = index == get_first_input() ? &in : nullptr;
        return 0;
    }
    int open_output(int index, lumo::MidiOutInterface*& device) override
    {
        device = index == get_first_output() ? &out : nullptr;
        return 0;
    }

    zq_test::TestMidiIn in;
    zq_test::TestMidiOut out;
};

class MidiPortsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        driver.inputs = {"USB Keys", "Loop Be"};
        driver.outputs = {"USB Synth"};
        mgr.set_receiver(&rec);
        mgr.set_port_selector(&ports);
        ports.set_midi_mgr(&mgr);
        host.in.connect(nullptr, &mgr, &rec);
        ports.add_component(&host);
        ports.add_component(&system);
        ASSERT_EQ(ports.initialise(), 0);
        ports.list_inputs();
        ports.list_outputs();
    }
    int load_ports(const std::string& in, const std::string& out)
    {
        const auto midi = basic::ConfKeyFactory::use_instance().create_key(
            "midi = { port_in = { name = \"" + in + "\" } port_out = { name = \"" + out + "\" } }");
        return ports.load_settings(dynamic_cast<const basic::ConfKeyMulti&>(*midi));
    }

    zq_test::FakeMidiDriver driver;
    zq_test::MidiRecorder rec;
    lumo::MidiMgr mgr;
    lumo::MidiDevSelDispatcher ports;
    HostPorts host;
    lumo::MciMidiDevSelComp system{zq_test::FakeMidiDriver::api()};
};

TEST_F(MidiPortsTest, HostPortsComeFirstAndNamesSelectWithoutRegardToCase)
{
    EXPECT_EQ(ports.get_input_names(), (Strings{"Host In", "USB Keys", "Loop Be"}));
    EXPECT_EQ(ports.get_output_names(), (Strings{"Host Out", "USB Synth"}));
    ASSERT_EQ(ports.select_defaults(true, false), 0);
    EXPECT_EQ(mgr.use_input(), &host.in);
    EXPECT_EQ(mgr.use_output(), nullptr);

    ASSERT_EQ(load_ports("loop be", "usb SYNTH"), 0);
    EXPECT_EQ(ports.get_selected_input(), 2);
    EXPECT_EQ(driver.opened_input, 1u);
    EXPECT_EQ(ports.get_selected_output(), 1);
    EXPECT_EQ(driver.open_ports, 2);

    basic::ConfKeyMulti midi("midi");
    ASSERT_EQ(ports.save_settings(midi), 0);
    EXPECT_EQ(midi.get_string("port_in/name"), "Loop Be");
    EXPECT_EQ(midi.get_string("port_out/name"), "USB Synth");

    // "none", and names that match nothing, select no port; an empty name keeps it.
    ASSERT_EQ(load_ports("", "none"), 0);
    EXPECT_EQ(ports.get_selected_input(), 2);
    EXPECT_EQ(ports.get_selected_output(), -1);
    EXPECT_EQ(mgr.use_output(), nullptr);
    ASSERT_EQ(load_ports("Nothing Here", ""), 0);
    EXPECT_EQ(ports.get_selected_input(), -1);
    EXPECT_EQ(driver.open_ports, 0);
    ports.save_settings(midi);
    EXPECT_EQ(midi.get_string("port_in/name"), "none");
}

TEST_F(MidiPortsTest, DriverFailuresLeaveNoPortSelected)
{
    driver.failing = "open";
    EXPECT_EQ(ports.select_input(1), -1);
    EXPECT_EQ(ports.select_output(1), -1);
    EXPECT_EQ(ports.get_selected_input(), -1);
    EXPECT_EQ(mgr.use_input(), nullptr);
    driver.failing = "start";
    EXPECT_EQ(ports.select_input(1), -1);
    EXPECT_EQ(mgr.use_input(), nullptr);
    driver.failing = "";

    ASSERT_EQ(ports.select_output(1), 0);
    driver.failing = "close";
    EXPECT_EQ(ports.select_output(0), -1);  // the open port stays the current one
    EXPECT_EQ(ports.get_selected_output(), 1);
    driver.failing = "";

    driver.bad_name = 1;
    EXPECT_EQ(ports.list_inputs(), -1);
    EXPECT_EQ(ports.get_input_names(), (Strings{"Host In", "USB Keys"}));
}

TEST_F(MidiPortsTest, DriverMessagesAreParsedAtTheNextBlock)
{
    ASSERT_EQ(ports.select_input(1), 0);
    std::vector<std::uint32_t> messages;
    for (std::uint32_t v = 0; v < 100; ++v)
    {
        messages.push_back(0xB3 | 7 << 8 | v << 16);
    }
    messages.push_back(0xF8);  // clock: no call at all
    driver.play(messages);
    mgr.block_start();
    ASSERT_EQ(rec.calls.size(), 201u);  // the clock only sets the time
    EXPECT_EQ(rec.calls[0], "time 0");
    EXPECT_EQ(rec.calls[1], "cc 3 7 0");
    EXPECT_EQ(rec.calls[199], "cc 3 7 99");
    rec.calls.clear();
    mgr.block_start();
    EXPECT_TRUE(rec.calls.empty());

    // A ring of 4000 holds 3999 messages; the rest are lost.
    driver.play(std::vector<std::uint32_t>(4500, 0xB0 | 1 << 8 | 5 << 16));
    mgr.block_start();
    EXPECT_EQ(rec.calls.size(), 2u * 3999u);
}

TEST_F(MidiPortsTest, SystemOutputSendsPackedShortMessages)
{
    ASSERT_EQ(ports.select_output(1), 0);
    EXPECT_EQ(driver.opened_output, 0u);
    EXPECT_NE(mgr.program_change(2, 300), 0);
    EXPECT_EQ(driver.sent, (std::vector<std::uint32_t>{0x0200B2, 0x0020B2, 0x2CC2}));
    driver.failing = "send";
    EXPECT_EQ(mgr.raw_byte(0xF8), 0);
    lumo::MciMidiOut closed(zq_test::FakeMidiDriver::api(), 0);
    EXPECT_EQ(closed.send_packet(0x90, 1, 2, 0), 0);
}

}  // namespace
