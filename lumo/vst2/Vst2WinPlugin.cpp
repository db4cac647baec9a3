#include "lumo/vst2/Vst2WinPlugin.h"

#include "gadu/WindowInterface.h"
#include "lumo/TextCompare.h"
#include "lumo/midi/MciMidiApi.h"
#include "lumo/midi/MidiDevSelDispatcher.h"

namespace lumo
{

Vst2WinPlugin::Vst2WinPlugin(vst2::HostCallback host, DspInterface* dsp, GuiInterface* gui,
                             MidiReceiverInterface* midi_receiver, const BankManager& bank,
                             std::int32_t unique_id)
    : Vst2Plugin(host, dsp, gui, midi_receiver, bank, unique_id), _gesture(*this), _thread(create_bkg_thread())
{
    if (MidiDevSelDispatcher* dispatcher = use_midi_dispatcher())
    {
        _system_midi_ports = std::make_unique<MciMidiDevSelComp>(get_system_midi_api());
        dispatcher->add_component(_system_midi_ports.get());
    }
    // Live calls its plug-ins' idle often and dislikes edits closed from other
    // threads: there the idle call closes gestures.
    _use_bkg_thread = !is_ableton_live();
    _container.set_context(dsp);
    _gesture.set_context(dsp);
    if (_use_bkg_thread)
    {
        _container.add(&_gesture);
    }
    _thread->set_handler(&_container);
    _thread->start();
    if (gui != nullptr)
    {
        if (std::unique_ptr<gadu::WindowInterface> window = create_editor_window())
        {
            _editor_host = new Vst2WinEditor(this, *gui, std::move(window));
            set_editor(_editor_host);
        }
    }
}

Vst2WinPlugin::~Vst2WinPlugin()
{
    _thread->stop();
    close_step();
}

bool Vst2WinPlugin::is_ableton_live()
{
    char vendor[256] = {};
    char product[256] = {};
    call_host(vst2::HostOp::get_vendor_string, 0, 0, vendor);
    call_host(vst2::HostOp::get_product_string, 0, 0, product);
    vendor[sizeof(vendor) - 1] = '\0';
    product[sizeof(product) - 1] = '\0';
    return equals_ignoring_case(vendor, "Ableton") && equals_ignoring_case(product, "Live");
}

int Vst2WinPlugin::on_idle()
{
    if (!_use_bkg_thread)
    {
        _gesture.process();
    }
    return 1;
}

void Vst2WinPlugin::post_tempo(float bpm)
{
    if (_editor_host != nullptr)
    {
        _editor_host->post_tempo(bpm);
    }
}

// The host's window has changed size: the editor's own window follows.
void Vst2WinPlugin::resize_editor_window(int width, int height)
{
    if (_editor_host != nullptr)
    {
        gadu::WindowInterface& window = _editor_host->use_window();
        window.set_window_size(width, height);
        window.resize();
    }
}

int Vst2WinPlugin::get_editor_zoom() const
{
    return _editor_host != nullptr ? _editor_host->use_window().use_zoom().get_factor() : 1;
}

int Vst2WinPlugin::start_bkg_task()
{
    BkgInterface* task = use_bkg_task();
    if (task == nullptr || _bkg_task_running.load(std::memory_order_acquire) || !_container.add(task))
    {
        return -1;
    }
    _bkg_task_running.store(true, std::memory_order_release);
    return 0;
}

void Vst2WinPlugin::stop_bkg_task()
{
    if (use_bkg_task() != nullptr && _bkg_task_running.exchange(false, std::memory_order_acq_rel))
    {
        _container.remove_last();
    }
}

}  // namespace lumo
