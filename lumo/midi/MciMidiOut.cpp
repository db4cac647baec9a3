#include "lumo/midi/MciMidiOut.h"

#include "lumo/midi/MciMidiApi.h"

#include <cstdint>

namespace lumo
{

MciMidiOut::~MciMidiOut()
{
    close();
}

int MciMidiOut::open()
{
    if (_handle != nullptr)
    {
        return 0;
    }
    void* handle = nullptr;
    if (_api.out_open(&handle, _device) != 0)
    {
        return -1;
    }
    _handle = handle;
    return 0;
}

int MciMidiOut::close()
{
    if (_handle == nullptr)
    {
        return 0;
    }
    if (_api.out_close(_handle) != 0)
    {
        return -1;
    }
    _handle = nullptr;
    return 0;
}

int MciMidiOut::send_packet(int b1, int b2, int b3, int b4)
{
    if (_handle == nullptr)
    {
        return 0;
    }
    const auto byte = [](int b) { return static_cast<std::uint32_t>(b) & 0xFF; };
    const std::uint32_t message = byte(b1) | byte(b2) << 8 | byte(b3) << 16 | byte(b4) << 24;
    return _api.out_short_msg(_handle, message) == 0 ? 1 : 0;
}

}  // namespace lumo
