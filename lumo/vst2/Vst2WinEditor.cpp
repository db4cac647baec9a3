#include "lumo/vst2/Vst2WinEditor.h"

#include "gadu/WindowInterface.h"
#include "lumo/DspInterface.h"
#include "lumo/EditorZoom.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/SettingKeys.h"

#include <cstdint>

namespace lumo
{

Vst2WinEditor::Vst2WinEditor(AudioEffect* effect, GuiInterface& gui, std::unique_ptr<gadu::WindowInterface> window)
    : AEffEditor(effect), _window(std::move(window)), _gui(gui)
{
    _gui.set_window(_window.get());
}

// The editor side is deleted before this (it goes with the adapter), and it
// let go of the window then; only the window itself is left to close.
Vst2WinEditor::~Vst2WinEditor() = default;

bool Vst2WinEditor::get_rect(vst2::ERect** rect)
{
    if (rect == nullptr)
    {
        return false;
    }
    if (get_parent() == nullptr)
    {
        read_zoom();
    }
    HostGuiInterface* host = _gui.use_host();
    int width = 0;
    int height = 0;
    if (host == nullptr || host->get_setting_num("can_resize_window") == 0.0)
    {
        _gui.get_size(width, height);
    }
    else
    {
        _gui.get_size_resizable(width, height);
    }
    const gadu::Zoom& zoom = _window->use_zoom();
    // The host's rectangle holds 16-bit numbers: the low bits are what it gets.
    _rect = vst2::ERect{0, 0, static_cast<std::int16_t>(zoom.to_platform(height)),
                        static_cast<std::int16_t>(zoom.to_platform(width))};
    *rect = &_rect;
    return true;
}

bool Vst2WinEditor::open(void* parent)
{
    read_zoom();
    AEffEditor::open(parent);
    if (_gui.open(parent) == 0)
    {
        return true;
    }
    // Closed as it was: the next rectangle reads the zoom again.
    AEffEditor::close();
    return false;
}

void Vst2WinEditor::read_zoom()
{
    const DspInterface* dsp = _gui.use_dsp();
    if (dsp != nullptr)
    {
        _window->set_zoom(gadu::Zoom(EditorZoom::read(dsp->get_setting_str(setting_key::plugin_name))));
    }
}

void Vst2WinEditor::close()
{
    _gui.close();
    AEffEditor::close();
}

void Vst2WinEditor::idle()
{
    _window->idle();
    if (_update_pending.exchange(false, std::memory_order_acquire))
    {
        update();
    }
}

void Vst2WinEditor::post_tempo(float bpm)
{
    _pending_tempo.store(bpm, std::memory_order_relaxed);
    _update_pending.store(true, std::memory_order_release);
}

void Vst2WinEditor::update()
{
    const double tempo = _pending_tempo.exchange(0.0, std::memory_order_relaxed);
    if (tempo > 0.0)
    {
        _gui.set_tempo(static_cast<float>(tempo));
    }
}

}  // namespace lumo
