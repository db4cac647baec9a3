#pragma once

namespace gadu
{
class WindowInterface;
}

namespace lumo
{

class BankManager;
class DspInterface;
class HostGuiInterface;

// The editor side of a plug-in. All calls arrive on the editor's window thread,
// except param_changed, which follows whichever thread changed the parameter.
class GuiInterface
{
public:
    virtual ~GuiInterface() = default;

    virtual void init() = 0;
    virtual void set_default_state() = 0;
    virtual void restore() = 0;

    // The editor owns its host service; the audio side is not owned.
    virtual HostGuiInterface* use_host() = 0;
    virtual void set_host(HostGuiInterface* host) = 0;
    virtual DspInterface* use_dsp() = 0;
    virtual void set_dsp(DspInterface* dsp) = 0;

    virtual void set_window(gadu::WindowInterface* window) = 0;
    virtual gadu::WindowInterface* use_window() = 0;

    virtual void get_size(int& width, int& height) const = 0;
    virtual void get_size_resizable(int& width, int& height) const = 0;

    // parent is the platform's window handle; 0 for success.
    virtual int open(void* parent) = 0;
    virtual void close() = 0;

    virtual void param_changed(int index, float value, int level) = 0;
    virtual void on_reserved(int a, int b) = 0;
    virtual void bank_changed(const BankManager& bank) = 0;
    virtual void set_tempo(float bpm) = 0;
    virtual void midi_learn_changed(int index, int state) = 0;
};

}  // namespace lumo
