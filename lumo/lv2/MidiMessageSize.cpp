#include "lumo/lv2/MidiMessageSize.h"

namespace lumo
{

std::uint32_t get_midi_message_size(std::uint8_t status)
{
    if (status < 0x80)
    {
        return 0;
    }
    if (status < 0xF0)
    {
        const int kind = status & 0xF0;
        return kind == 0xC0 || kind == 0xD0 ? 2 : 3;
    }
    switch (status)
    {
    case 0xF1:  // time code quarter frame
    case 0xF3:  // song select
        return 2;
    case 0xF2:  // song position
        return 3;
    case 0xF0:  // SysEx start
    case 0xF4:  // undefined
    case 0xF5:  // undefined
    case 0xF7:  // SysEx end
        return 0;
    default:  // tune request and real-time messages
        return 1;
    }
}

}  // namespace lumo
