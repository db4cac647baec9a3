#pragma once

#include <cstdint>
#include <string>

namespace lumo
{

// The few calls of the operating system's MIDI ports that the plug-in makes,
// as a table so that tests can stand in a driver of their own. Results are
// 0 or -1. An opened input delivers its messages to
// MciMidiIn::on_driver_message(instance, ...) on the driver's own thread.
struct MciMidiApi
{
    // The message type of incoming short MIDI messages.
    static constexpr std::uint32_t msg_data = 0x3C3;

    unsigned (*in_get_num_devs)();
    int (*in_get_name)(unsigned device, std::string& name);
    int (*in_open)(void** handle, unsigned device, void* instance);
    int (*in_start)(void* handle);
    int (*in_close)(void* handle);
    unsigned (*out_get_num_devs)();
    int (*out_get_name)(unsigned device, std::string& name);
    int (*out_open)(void** handle, unsigned device);
    int (*out_close)(void* handle);
    int (*out_short_msg)(void* handle, std::uint32_t message);
};

// The operating system's table; elsewhere than on Windows it has no ports.
const MciMidiApi& get_system_midi_api();

}  // namespace lumo
