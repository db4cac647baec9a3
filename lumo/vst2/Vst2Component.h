#pragma once

namespace lumo
{

class MidiMgr;
class Vst2Plugin;

// A part of the MIDI set-up that talks to the VST 2 adapter directly.
class Vst2Component
{
public:
    virtual ~Vst2Component() = default;

    virtual void connect_adapter(Vst2Plugin* /*adapter*/, MidiMgr* /*mgr*/) {}
};

}  // namespace lumo
