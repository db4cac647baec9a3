#include "lumo/midi/MciMidiApi.h"

#include "lumo/midi/MciMidiIn.h"

#include <windows.h>
#include <mmsystem.h>

namespace lumo
{
namespace
{

void CALLBACK on_input(HMIDIIN /*handle*/, UINT msg, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR param2)
{
    MciMidiIn::on_driver_message(reinterpret_cast<void*>(instance), msg, param1, param2);
}

unsigned in_get_num_devs()
{
    return midiInGetNumDevs();
}

int in_get_name(unsigned device, std::string& name)
{
    MIDIINCAPSA caps{};
    if (midiInGetDevCapsA(device, &caps, sizeof(caps)) != MMSYSERR_NOERROR)
    {
        return -1;
    }
    caps.szPname[sizeof(caps.szPname) - 1] = '\0';
    name = caps.szPname;
    return 0;
}

int in_open(void** handle, unsigned device, void* instance)
{
    HMIDIIN h = nullptr;
    if (midiInOpen(&h, device, reinterpret_cast<DWORD_PTR>(&on_input), reinterpret_cast<DWORD_PTR>(instance),
                   CALLBACK_FUNCTION)
        != MMSYSERR_NOERROR)
    {
        return -1;
    }
    *handle = h;
    return 0;
}

int in_start(void* handle)
{
    return midiInStart(static_cast<HMIDIIN>(handle)) == MMSYSERR_NOERROR ? 0 : -1;
}

int in_close(void* handle)
{
    return midiInClose(static_cast<HMIDIIN>(handle)) == MMSYSERR_NOERROR ? 0 : -1;
}

unsigned out_get_num_devs()
{
    return midiOutGetNumDevs();
}

int out_get_name(unsigned device, std::string& name)
{
    MIDIOUTCAPSA caps{};
    if (midiOutGetDevCapsA(device, &caps, sizeof(caps)) != MMSYSERR_NOERROR)
    {
        return -1;
    }
    caps.szPname[sizeof(caps.szPname) - 1] = '\0';
    name = caps.szPname;
    return 0;
}

int out_open(void** handle, unsigned device)
{
    HMIDIOUT h = nullptr;
    if (midiOutOpen(&h, device, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR)
    {
        return -1;
    }
    *handle = h;
    return 0;
}

int out_close(void* handle)
{
    return midiOutClose(static_cast<HMIDIOUT>(handle)) == MMSYSERR_NOERROR ? 0 : -1;
}

int out_short_msg(void* handle, std::uint32_t message)
{
    return midiOutShortMsg(static_cast<HMIDIOUT>(handle), message) == MMSYSERR_NOERROR ? 0 : -1;
}

}  // namespace

const MciMidiApi& get_system_midi_api()
{
    static const MciMidiApi api{in_get_num_devs,  in_get_name,  in_open,  in_start,  in_close,
                                out_get_num_devs, out_get_name, out_open, out_close, out_short_msg};
    return api;
}

}  // namespace lumo
