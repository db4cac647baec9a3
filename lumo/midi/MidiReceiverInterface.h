#pragma once

#include <cstdint>

namespace lumo
{

// The sink of parsed MIDI. The audio side implements it, and so do the MIDI
// outputs (which turn the calls back into bytes). Every handler that a
// receiver does not override ignores its message and answers 0; a receiver
// answers non-zero when it handled the call.
class MidiReceiverInterface
{
public:
    virtual ~MidiReceiverInterface() = default;

    // Sample offset, within the current audio block, of the events that follow.
    virtual int set_event_time(std::int32_t /*offset*/) { return 0; }
    // pitch: note + detune + channel tuning, in semitones; velocity: MIDI velocity / 64.
    // The two constant arguments (always 0 and 1 here) are kept for receivers
    // that give them a meaning.
    virtual int note_on(int /*channel*/, int /*note*/, float /*pitch*/, int /*zero*/, float /*velocity*/,
                        int /*one*/)
    {
        return 0;
    }
    virtual int note_off(int /*channel*/, int /*note*/, float /*velocity*/) { return 0; }
    virtual int poly_pressure(int /*channel*/, int /*note*/, float /*pressure*/) { return 0; }
    // bend in semitones.
    virtual int pitch_bend(int /*channel*/, float /*bend*/) { return 0; }
    // program: bank * 128 + program number.
    virtual int program_change(int /*channel*/, int /*program*/) { return 0; }
    // 14-bit parameter number and value.
    virtual int rpn_change(int /*channel*/, int /*number*/, int /*value*/) { return 0; }
    virtual int nrpn_change(int /*channel*/, int /*number*/, int /*value*/) { return 0; }
    // 7-bit value.
    virtual int control_change(int /*channel*/, int /*controller*/, int /*value*/) { return 0; }
    // Every channel message once more, whole: status is its high nibble.
    virtual int raw_message(int /*channel*/, int /*status*/, int /*data1*/, int /*data2*/) { return 0; }
    virtual int raw_byte(int /*status*/) { return 0; }
    virtual int raw_message3(int /*status*/, int /*data1*/, int /*data2*/) { return 0; }
    // Reserved for receivers of other plug-ins; no input calls them.
    virtual int reserved_a(int /*a*/, int /*b*/) { return 0; }
    virtual int reserved_b() { return 0; }
};

}  // namespace lumo
