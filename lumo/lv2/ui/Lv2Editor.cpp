#include "lumo/lv2/ui/Lv2Editor.h"

#include "gadu/x11/WindowX11.h"
#include "lumo/DspInterface.h"
#include "lumo/EditorZoom.h"
#include "lumo/GuiInterface.h"
#include "lumo/SettingKeys.h"
#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2Event.h"
#include "lumo/lv2/Lv2LearnMirror.h"
#include "lumo/lv2/ui/HostGuiLv2.h"
#include "lumo/lv2/ui/Lv2UiRecipe.h"

#include <lv2/atom/atom.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace lumo
{
namespace
{

// Room for the largest request the editor sends.
constexpr std::size_t request_capacity = 128;

std::unique_ptr<DspInterface> make_dsp(const Lv2UiRecipe& recipe)
{
    std::unique_ptr<DspInterface> dsp(recipe.create_dsp != nullptr ? recipe.create_dsp() : nullptr);
    if (!dsp)
    {
        throw std::runtime_error("lumo::Lv2Editor::Lv2Editor() : No audio side.");
    }
    dsp->init();
    dsp->set_default_state();
    return dsp;
}

}  // namespace

Lv2Editor::Sides Lv2Editor::make_sides(const Lv2UiRecipe& recipe)
{
    Sides sides{make_dsp(recipe),
                std::unique_ptr<GuiInterface>(recipe.create_gui != nullptr ? recipe.create_gui() : nullptr)};
    if (!sides.gui)
    {
        throw std::runtime_error("lumo::Lv2Editor::Lv2Editor() : No editor.");
    }
    sides.gui->set_dsp(sides.dsp.get());
    sides.dsp->set_gui(sides.gui.get());
    return sides;
}

Lv2Editor::Lv2Editor(const Lv2UiRecipe& recipe, const Host& host) : Lv2Editor(make_sides(recipe), recipe, host)
{
}

Lv2Editor::Lv2Editor(Sides sides, const Lv2UiRecipe& recipe, const Host& host)
    : PluginCmdMixin(*sides.dsp, sides.gui.get()),
      _dsp(std::move(sides.dsp)),
      _window(std::make_unique<gadu::WindowX11>()),
      _gui(std::move(sides.gui)),
      _host(host),
      _layout(*_dsp),
      _gestures(_dsp->get_nbr_param())
{
    if (host.write == nullptr)
    {
        throw std::runtime_error("lumo::Lv2Editor::Lv2Editor() : The host writes no ports.");
    }
    _urids.map_all(host.map, recipe.plugin_uri);
    _log.set(host.log, _urids.log_error);
    if (_urids.is_mapped())
    {
        // The forge asks the map for its atom types, here on the host's thread.
        lv2_atom_forge_init(&_forge, const_cast<LV2_URID_Map*>(host.map));
        _learn = std::make_unique<Lv2LearnMirror>();
    }
    for (int i = 0; i < _dsp->get_nbr_param(); ++i)
    {
        _controls.emplace_back(_dsp->use_param(i));
    }
    _gui->set_host(new HostGuiLv2(*this));
    _gui->init();
    _gui->set_default_state();
    _gui->set_window(_window.get());
    _window->set_zoom(gadu::Zoom(EditorZoom::read(_dsp->get_setting_str(setting_key::plugin_name))));
    int width = 0;
    int height = 0;
    _gui->get_size(width, height);
    tell_host_size(width, height);
    if (_gui->open(host.parent) != 0)
    {
        _log.error("%s: the editor cannot open: %s\n", _dsp->get_setting_str(setting_key::plugin_name).c_str(),
                   _window->get_error_text().c_str());
        throw std::runtime_error("lumo::Lv2Editor::Lv2Editor() : Cannot open the editor.");
    }
}

Lv2Editor::~Lv2Editor()
{
    // A host that closes the editor while a control is held gets its touch back.
    _gestures.close_all([](int) { return true; }, [this](int i) { touch(i, false); });
    _gui->close();
    _gui.reset();
    _dsp->restore();
}

unsigned long Lv2Editor::get_widget() const
{
    return _window->use_handle();
}

MidiMgr* Lv2Editor::use_midi_mgr() const
{
    return _learn ? &_learn->use_mgr() : nullptr;
}

std::uint32_t Lv2Editor::get_control_port(int index) const
{
    return _layout.get_first_control() + static_cast<std::uint32_t>(index);
}

// ---- From the host -------------------------------------------------------------------

void Lv2Editor::port_event(std::uint32_t port, std::uint32_t size, std::uint32_t format, const void* buffer)
{
    if (buffer == nullptr)
    {
        return;
    }
    int n = 0;
    const Lv2PortLayout::Kind kind = _layout.get_kind(port, n);
    if (kind == Lv2PortLayout::Kind::control && format == 0 && size == sizeof(float))
    {
        float value = 0.0f;
        std::memcpy(&value, buffer, sizeof(value));
        take_control(n, value);
    }
    else if (kind == Lv2PortLayout::Kind::atom_out && format != 0 && format == _urids.atom_event_transfer)
    {
        take_atom(buffer, size);
    }
}

// What the host sends while the editor touches the control is the echo of
// the editor's own writes (a host holds back its automation on a touch): the
// control follows the hand, not the echo.
void Lv2Editor::take_control(int index, float value)
{
    float norm = 0.0f;
    if (!_gestures.is_open(index) && _controls[static_cast<std::size_t>(index)].to_norm(value, norm))
    {
        set_param(index, norm, priority_level::host_automation);
    }
}

// The host's bytes are read without trusting their sizes.
void Lv2Editor::take_atom(const void* buffer, std::uint32_t size)
{
    LV2_Atom atom{};
    if (!_learn || size < sizeof(atom))
    {
        return;
    }
    std::memcpy(&atom, buffer, sizeof(atom));
    if (atom.size > size - sizeof(atom))
    {
        return;
    }
    Lv2Event event;
    event.type = atom.type;
    event.size = atom.size;
    event.body = static_cast<const std::uint8_t*>(buffer) + sizeof(atom);
    _learn->take(Lv2AtomObject(event, _urids), _urids);
}

void Lv2Editor::idle()
{
    _window->idle();
    const std::uint32_t errors = _window->get_error_count();
    if (errors != _errors_told)
    {
        _log.error("%s: %u X protocol errors in the editor's window\n",
                   _dsp->get_setting_str(setting_key::plugin_name).c_str(), errors);
        _errors_told = errors;
    }
    _gestures.close_all([this](int i) { return is_free(i, priority_level::gesture_end_test); },
                        [this](int i) { touch(i, false); });
    if (!_learn)
    {
        return;
    }
    // The editor shows the bindings from the audio side's first answer on;
    // it asks once the host runs it, not while the host is still building it.
    if (!_bindings_asked)
    {
        send_request(Lv2LearnMessage::Request::get_bindings, -1);
        _bindings_asked = true;
    }
    _learn->send_changes([this](Lv2LearnMessage::Request request, int param) { send_request(request, param); });
}

// ---- To the host ---------------------------------------------------------------------

void Lv2Editor::report_param(int index, float value)
{
    _gestures.open(index, [&] { touch(index, true); });
    const float port_value = _controls[static_cast<std::size_t>(index)].to_port(value);
    _host.write(_host.controller, get_control_port(index), sizeof(port_value), 0, &port_value);
}

void Lv2Editor::touch(int index, bool grabbed) const
{
    if (_host.touch != nullptr && _host.touch->touch != nullptr)
    {
        _host.touch->touch(_host.touch->handle, get_control_port(index), grabbed);
    }
}

void Lv2Editor::send_request(Lv2LearnMessage::Request request, int param)
{
    if (!_learn)
    {
        return;
    }
    alignas(8) std::array<std::uint8_t, request_capacity> buffer{};
    lv2_atom_forge_set_buffer(&_forge, buffer.data(), buffer.size());
    if (Lv2LearnMessage::write_request(_forge, _urids, request, param))
    {
        const auto* atom = reinterpret_cast<const LV2_Atom*>(buffer.data());
        _host.write(_host.controller, _layout.get_atom_in(), static_cast<std::uint32_t>(sizeof(LV2_Atom) + atom->size),
                    _urids.atom_event_transfer, atom);
    }
}

int Lv2Editor::resize(int width, int height)
{
    _window->set_window_size(width, height);
    _window->resize();
    tell_host_size(width, height);
    return 0;
}

void Lv2Editor::tell_host_size(int width, int height) const
{
    if (_host.resize != nullptr && _host.resize->ui_resize != nullptr)
    {
        const gadu::Zoom& zoom = _window->use_zoom();
        _host.resize->ui_resize(_host.resize->handle, zoom.to_platform(width), zoom.to_platform(height));
    }
}

}  // namespace lumo
