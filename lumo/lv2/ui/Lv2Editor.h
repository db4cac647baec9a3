#pragma once

#include "lumo/GestureQueue.h"
#include "lumo/PluginCmdMixin.h"
#include "lumo/lv2/Lv2ControlPort.h"
#include "lumo/lv2/Lv2LearnMessage.h"
#include "lumo/lv2/Lv2Log.h"
#include "lumo/lv2/Lv2PortLayout.h"
#include "lumo/lv2/Lv2Urids.h"

#include <lv2/atom/forge.h>
#include <lv2/log/log.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace gadu
{
class WindowX11;
}

namespace lumo
{

class DspInterface;
class GuiInterface;
class Lv2LearnMirror;
struct Lv2UiRecipe;

// The plug-in's editor as an LV2 host embeds it (ui:X11UI): the very editor
// the VST 2 adapter shows, in the toolkit's X11 window inside the host's
// parent window, driven by the host's idle calls, at the user's zoom. It
// runs apart from the audio side and reaches it through ports only: a
// control's change is a write of its control port inside a touch, the
// host's port events move the controls, and MIDI learn is a conversation of
// atom messages (Lv2LearnMessage). Its parameters are those of a DspMirror
// of the effect, arbitrated by the framework's command core as in the
// plug-in.
class Lv2Editor : public PluginCmdMixin
{
public:
    // What the host offers; parent and write are needed, the rest may be null.
    struct Host
    {
        LV2UI_Write_Function write = nullptr;
        LV2UI_Controller controller = nullptr;
        void* parent = nullptr;
        const LV2_URID_Map* map = nullptr;
        const LV2UI_Touch* touch = nullptr;
        const LV2UI_Resize* resize = nullptr;
        const LV2_Log_Log* log = nullptr;
    };

    // Builds the editor and opens it in the host's parent window, at the
    // size the user's "Editor Zoom" gives it, which the host is told. Throws
    // when any of it fails (no display, no such parent window), and says why
    // in the host's log.
    Lv2Editor(const Lv2UiRecipe& recipe, const Host& host);
    ~Lv2Editor() override;
    Lv2Editor(const Lv2Editor&) = delete;
    Lv2Editor& operator=(const Lv2Editor&) = delete;

    // The editor's own window, which the host gets as the UI's widget.
    unsigned long get_widget() const;
    // The host's calls: a port's new value (a control's float, or an atom
    // from the notify port), and idle.
    void port_event(std::uint32_t port, std::uint32_t size, std::uint32_t format, const void* buffer);
    // Also tells the host's log of X protocol errors in the editor's window:
    // the toolkit keeps them from the host, which would otherwise end.
    void idle();

    // PluginCmdInterface: the host hears of a change as a write of the
    // parameter's control port, inside a touch that ends once the parameter
    // is free again.
    void report_param(int index, float value) override;
    // The mirror of the audio side's MIDI bindings; null without the host's
    // URID map, which the learn messages need.
    MidiMgr* use_midi_mgr() const override;

    // The editor's window takes another size (in editor pixels); 0.
    int resize(int width, int height);

private:
    struct Sides
    {
        std::unique_ptr<DspInterface> dsp;
        std::unique_ptr<GuiInterface> gui;
    };

    static Sides make_sides(const Lv2UiRecipe& recipe);
    Lv2Editor(Sides sides, const Lv2UiRecipe& recipe, const Host& host);
    std::uint32_t get_control_port(int index) const;
    void take_control(int index, float value);
    void take_atom(const void* buffer, std::uint32_t size);
    void touch(int index, bool grabbed) const;
    void send_request(Lv2LearnMessage::Request request, int param);
    void tell_host_size(int width, int height) const;

    // The editor goes before its window, and both before the audio side
    // whose parameters the controls hold.
    std::unique_ptr<DspInterface> _dsp;
    std::unique_ptr<gadu::WindowX11> _window;
    std::unique_ptr<GuiInterface> _gui;
    Host _host;
    Lv2PortLayout _layout;
    Lv2Urids _urids;
    Lv2Log _log;
    std::uint32_t _errors_told = 0;
    std::vector<Lv2ControlPort> _controls;
    GestureQueue _gestures;
    LV2_Atom_Forge _forge{};
    std::unique_ptr<Lv2LearnMirror> _learn;
    bool _bindings_asked = false;
};

}  // namespace lumo
