#pragma once

#include "lumo/midi/MciMidiApi.h"
#include "lumo/midi/MciMidiIn.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

// A system MIDI driver for tests: ports named by the test, failures on
// request, and an input that delivers messages from a thread of its own, as
// a real driver does. One driver is current at a time.
namespace zq_test
{

class FakeMidiDriver
{
public:
    FakeMidiDriver() { current() = this; }
    ~FakeMidiDriver()
    {
        stop();
        current() = nullptr;
    }

    static const lumo::MciMidiApi& api()
    {
        static const lumo::MciMidiApi table{in_count, in_name, in_open, in_start, in_close,
                                            out_count, out_name, out_open, out_close, out_short};
        return table;
    }

    // Delivers the messages (packed as status | d1 << 8 | d2 << 16) to the
    // open input from the driver's thread; join with stop().
    void play(std::vector<std::uint32_t> messages)
    {
        stop();
        _thread = std::thread([this, messages] {
            for (std::uint32_t m : messages)
            {
                lumo::MciMidiIn::on_driver_message(instance.load(), lumo::MciMidiApi::msg_data, m, 7);
            }
        });
    }
    void stop()
    {
        if (_thread.joinable())
        {
            _thread.join();
        }
    }

    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    int bad_name = -1;  // the device whose caps cannot be read
    bool fail_open = false;
    bool fail_start = false;
    bool fail_close = false;
    bool fail_send = false;
    std::atomic<void*> instance{nullptr};
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
    static int in_open(void** handle, unsigned n, void* instance)
    {
        if (d().fail_open)
        {
            return -1;
        }
        d().opened_input = n;
        d().instance.store(instance);
        ++d().open_ports;
        *handle = &d();
        return 0;
    }
    static int in_start(void* /*handle*/) { return d().fail_start ? -1 : 0; }
    static int port_close(void* /*handle*/)
    {
        if (d().fail_close)
        {
            return -1;
        }
        --d().open_ports;
        return 0;
    }
    static int in_close(void* handle)
    {
        const int err = port_close(handle);
        if (err == 0)
        {
            d().instance.store(nullptr);
        }
        return err;
    }
    static int out_open(void** handle, unsigned n)
    {
        if (d().fail_open)
        {
            return -1;
        }
        d().opened_output = n;
        ++d().open_ports;
        *handle = &d();
        return 0;
    }
    static int out_close(void* handle) { return port_close(handle); }
    static int out_short(void* /*handle*/, std::uint32_t message)
    {
        if (d().fail_send)
        {
            return -1;
        }
        d().sent.push_back(message);
        return 0;
    }

    std::thread _thread;
};

}  // namespace zq_test
