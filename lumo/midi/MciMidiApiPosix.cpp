#include "lumo/midi/MciMidiApi.h"

namespace lumo
{
namespace
{

unsigned no_devices()
{
    return 0;
}

int no_name(unsigned /*device*/, std::string& /*name*/)
{
    return -1;
}

int no_input(void** /*handle*/, unsigned /*device*/, void* /*instance*/)
{
    return -1;
}

int no_output(void** /*handle*/, unsigned /*device*/)
{
    return -1;
}

int no_handle(void* /*handle*/)
{
    return -1;
}

int no_message(void* /*handle*/, std::uint32_t /*message*/)
{
    return -1;
}

}  // namespace

// This platform has no system MIDI ports of ours: the host's are the only ones.
const MciMidiApi& get_system_midi_api()
{
    static const MciMidiApi api{no_devices, no_name, no_input,  no_handle, no_handle,
                                no_devices, no_name, no_output, no_handle, no_message};
    return api;
}

}  // namespace lumo
