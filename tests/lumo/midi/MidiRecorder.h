#pragma once

#include "lumo/midi/MidiInCcMixin.h"
#include "lumo/midi/MidiOut4BPacketMixin.h"
#include "lumo/midi/MidiReceiverInterface.h"

#include <cstdio>
#include <string>
#include <vector>

// Test doubles of the MIDI side: a receiver that writes every call down as one
// line of text, and an input that parses into it.
namespace zq_test
{

class MidiRecorder : public lumo::MidiReceiverInterface
{
public:
    int set_event_time(std::int32_t offset) override { return log("time", offset); }
    int note_on(int c, int n, float pitch, int zero, float velocity, int one) override
    {
        return log("on", c, n, pitch, zero, velocity, one);
    }
    int note_off(int c, int n, float velocity) override { return log("off", c, n, velocity); }
    int poly_pressure(int c, int n, float p) override { return log("poly", c, n, p); }
    int pitch_bend(int c, float bend) override { return log("bend", c, bend); }
    int program_change(int c, int p) override { return log("program", c, p); }
    int rpn_change(int c, int n, int v) override { return log("rpn", c, n, v); }
    int nrpn_change(int c, int n, int v) override { return log("nrpn", c, n, v); }
    int control_change(int c, int n, int v) override { return log("cc", c, n, v); }
    int raw_message(int c, int s, int d1, int d2) override { return raw ? log("raw", c, s, d1, d2) : 1; }

    // The calls of a kind, without the raw echo of every message when raw is off.
    std::vector<std::string> calls;
    bool raw = false;

private:
    template <class... T>
    int log(const char* what, T... args)
    {
        std::string line = what;
        (append(line, args), ...);
        calls.push_back(line);
        return 1;
    }
    static void append(std::string& line, int v) { line += " " + std::to_string(v); }
    static void append(std::string& line, float v)
    {
        char text[32];
        std::snprintf(text, sizeof(text), " %g", static_cast<double>(v));
        line += text;
    }
};

// An input with no port behind it: what the test feeds is what it parses.
class TestMidiIn : public lumo::MidiInCcMixin
{
public:
    int activate() override { return reset_channels(); }
    int deactivate() override
    {
        detach_channels();
        return 0;
    }
    int open() override { return 0; }
    int close() override { return 0; }
    int block_start() override { return 0; }
    void on_controller(std::int32_t id, std::int32_t value14) override
    {
        events.push_back({id, value14});
        lumo::MidiInCcMixin::on_controller(id, value14);
    }

    struct Event
    {
        std::int32_t id;
        std::int32_t value;
        bool operator==(const Event& o) const { return id == o.id && value == o.value; }
    };
    std::vector<Event> events;
};

// An output that keeps every packet as hexadecimal text ("B0 65 00 00") and
// takes only as many as the test allows.
class TestMidiOut : public lumo::MidiOut4BPacketMixin
{
public:
    int activate() override { return 0; }
    int deactivate() override { return 0; }
    int open() override { return 0; }
    int close() override { return 0; }
    int block_start() override { return 0; }
    int send_packet(int b1, int b2, int b3, int b4) override
    {
        if (room == 0)
        {
            return 0;
        }
        --room;
        char text[16];
        std::snprintf(text, sizeof(text), "%02X %02X %02X %02X", b1, b2, b3, b4);
        packets.push_back(text);
        return 1;
    }

    std::vector<std::string> packets;
    int room = 1 << 30;
};

}  // namespace zq_test
