#pragma once

#include "basic/SettingClientInterface.h"

namespace lumo
{

class DspInterface;
class MidiMgr;
class MidiReceiverInterface;

// One MIDI port, in or out, of the host or of the operating system. The links
// are not owned and stay null until the port is connected; outputs use only
// the learn manager.
class MidiDevInterface : public basic::SettingClientInterface
{
public:
    ~MidiDevInterface() override = default;

    // Ports keep nothing in the settings file beyond their name, which the
    // port selector stores.
    int save_settings(basic::ConfKeyMulti& /*root*/) override { return 0; }
    int load_settings(const basic::ConfKeyMulti& /*root*/) override { return 0; }

    // 0 or an error code (-1 for a failure of the operating system).
    virtual int activate() = 0;
    virtual int deactivate() = 0;
    virtual int open() = 0;
    virtual int close() = 0;
    // Bracket every audio block, on the audio thread.
    virtual int block_start() = 0;
    virtual int block_end() { return 0; }
    // Outputs send one packet of up to four bytes; non-zero when it was taken.
    virtual int send_packet(int /*b1*/, int /*b2*/, int /*b3*/, int /*b4*/) { return 0; }

    void connect(DspInterface* dsp, MidiMgr* mgr, MidiReceiverInterface* receiver)
    {
        _dsp = dsp;
        _mgr = mgr;
        _receiver = receiver;
    }
    DspInterface* use_dsp() const { return _dsp; }
    MidiMgr* use_midi_mgr() const { return _mgr; }
    MidiReceiverInterface* use_receiver() const { return _receiver; }

private:
    DspInterface* _dsp = nullptr;
    MidiMgr* _mgr = nullptr;
    MidiReceiverInterface* _receiver = nullptr;
};

}  // namespace lumo
