#pragma once

#include "lumo/midi/MciMidiApi.h"
#include "lumo/midi/MciMidiIn.h"

#include <cstdint>
#include <string>
#include <vector>

// A system MIDI driver for tests: ports named by the test, a call that fails
// on request, and input messages handed over as the driver's callback does.
// One driver is current at a time.
namespace zq_test
{

class FakeMidiDriver
{
public:
    FakeMidiDriver() { current() = this; }
    ~FakeMidiDriver() { current() = nullptr; }

    static const lumo::MciMidiApi& api()
    {
        static const lumo::MciMidiApi table{in_count, in_name, in_open, in_start, in_close,
                                            out_count, out_name, out_open, close, out_short};
        return table;
    }

    // Delivers the messages (packed as status | d1 << 8 | d2 << 16) to the
    // open input.
    void play(const std::vector<std::uint32_t>& messages) const
    {
        for (const std::uint32_t m : messages)
        {
            lumo::MciMidiIn::on_driver_message(instance, lumo::MciMidiApi::msg_data, m, 7);
        }
    }

    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    int bad_name = -1;    // the device whose caps cannot be read
    std::string failing;  // the call that fails: "open", "start", "close" or "send"
    void* instance = nullptr;
    unsigned opened_input = ~0u;
    unsigned opened_output = ~0u;
    int open_ports = 0;
    std::vector<std::uint32_t> sent;

private:
    static FakeMidiDriver*& current()
    {
        static FakeMidiDriver* driver = nullptr;
        return driver;
    }
    static FakeMidiDriver& d() { return *current(); }
    static int answer(const char* call) { return d().failing == call ? -1 : 0; }
    static unsigned in_count() { return static_cast<unsigned>(d().inputs.size()); }
    static unsigned out_count() { return static_cast<unsigned>(d().outputs.size()); }
    static int name_of(const std::vector<std::string>& names, unsigned n, std::string& name)
    {
        if (static_cast<int>(n) == d().bad_name || n >= names.size())
        {
            return -1;
        }
        name = names[n];
        return 0;
    }
    static int in_name(unsigned n, std::string& name) { return name_of(d().inputs, n, name); }
    static int out_name(unsigned n, std::string& name) { return name_of(d().outputs, n, name); }
    static int open(void** handle, unsigned n, unsigned& opened)
    {
        if (answer("open") == 0)
        {
            opened = n;
            ++d().open_ports;
            *handle = &d();
        }
        return answer("open");
    }
    static int in_open(void** handle, unsigned n, void* instance)
    {
        d().instance = instance;
        return open(handle, n, d().opened_input);
    }
    static int out_open(void** handle, unsigned n) { return open(handle, n, d().opened_output); }
    static int in_start(void* /*handle*/) { return answer("start"); }
    static int close(void* /*handle*/)
    {
        d().open_ports -= answer("close") == 0 ? 1 : 0;
        return answer("close");
    }
    static int in_close(void* handle)
    {
        d().instance = answer("close") == 0 ? nullptr : d().instance;
        return close(handle);
    }
    static int out_short(void* /*handle*/, std::uint32_t message)
    {
        if (answer("send") == 0)
        {
            d().sent.push_back(message);
        }
        return answer("send");
    }
};

}  // namespace zq_test
