#pragma once

#include "lumo/vst2/BkgContainer.h"
#include "lumo/vst2/BkgInterface.h"
#include "lumo/vst2/BkgThreadHandlerInterface.h"
#include "lumo/midi/MciMidiDevSelComp.h"
#include "lumo/vst2/Vst2Plugin.h"
#include "lumo/vst2/Vst2WinEditor.h"

#include <atomic>
#include <memory>

namespace lumo
{

// The adapter as it runs in a host: adds the background thread that closes the
// host's edit gestures (or, in Ableton Live, closes them from the host's idle
// call) and runs the audio side's background task.
class Vst2WinPlugin : public Vst2Plugin
{
public:
    // Closes the gestures of the adapter it is bound to.
    class BkgGesture : public BkgInterface
    {
    public:
        explicit BkgGesture(Vst2Plugin& adapter) : _adapter(adapter) {}
        void process() override { _adapter.close_free_gestures(); }
        void* get_context() const override { return _context; }
        void set_context(void* context) override { _context = context; }

    private:
        Vst2Plugin& _adapter;
        void* _context = nullptr;
    };

    Vst2WinPlugin(vst2::HostCallback host, DspInterface* dsp, GuiInterface* gui,
                  MidiReceiverInterface* midi_receiver, const BankManager& bank, std::int32_t unique_id);
    ~Vst2WinPlugin() override;

    int on_idle() override;
    void resize_editor_window(int width, int height) override;
    int get_editor_zoom() const override;
    // Null when the plug-in has no editor.
    Vst2WinEditor* use_editor_host() const { return _editor_host; }
    int start_bkg_task() override;
    void stop_bkg_task() override;

    bool is_using_bkg_thread() const { return _use_bkg_thread; }
    const BkgContainer& use_bkg_container() const { return _container; }

protected:
    void post_tempo(float bpm) override;

private:
    bool is_ableton_live();

    BkgContainer _container;
    BkgGesture _gesture;
    std::unique_ptr<BkgThreadHandlerInterface> _thread;
    // The operating system's MIDI ports, after the host's in the port list.
    std::unique_ptr<MciMidiDevSelComp> _system_midi_ports;
    std::atomic<bool> _bkg_task_running{false};
    bool _use_bkg_thread = true;
    Vst2WinEditor* _editor_host = nullptr;  // owned by the base
};

}  // namespace lumo
