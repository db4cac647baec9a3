#pragma once

#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/Knob.h"
#include "lumo/GuiInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/MasterMgr.h"
#include "lumo/gui/GraphRscMixin.h"
#include "lumo/gui/ListenerBase.h"
#include "lumo/gui/MetaControl.h"
#include "zarquette/gui/GuiEffect.h"
#include "zarquette/gui/MidiLearn.h"
#include "zarquette/gui/MidiLearnMenu.h"
#include "zarquette/gui/ParamInbox.h"

#include <memory>
#include <vector>

namespace zarquette
{

// The effect's editor: one fixed screen of 512 x 384 with the background, four
// knobs and the switch, each bound to its parameter, drawn and driven by the
// toolkit in the window the host adapter hands over.
class ZarquetteGui : public lumo::GuiInterface, public lumo::GraphRscMixin
{
public:
    static constexpr int width = 512;
    static constexpr int height = 384;
    static const std::array<PictureEntry, 8> picture_table;
    static const std::array<const char*, 1> font_table;

    ZarquetteGui();
    ~ZarquetteGui() override;
    ZarquetteGui(const ZarquetteGui&) = delete;
    ZarquetteGui& operator=(const ZarquetteGui&) = delete;

    void init() override;
    void set_default_state() override;
    void restore() override {}

    // Owned: deleted with the editor.
    lumo::HostGuiInterface* use_host() override { return _host.get(); }
    void set_host(lumo::HostGuiInterface* host) override { _host.reset(host); }
    lumo::DspInterface* use_dsp() override { return _dsp; }
    void set_dsp(lumo::DspInterface* dsp) override;

    void set_window(gadu::WindowInterface* window) override;
    gadu::WindowInterface* use_window() override { return _window; }

    void get_size(int& w, int& h) const override;
    void get_size_resizable(int& w, int& h) const override { get_size(w, h); }

    int open(void* parent) override;
    void close() override;

    void param_changed(int index, float value, int level) override;
    void on_reserved(int /*a*/, int /*b*/) override {}
    void bank_changed(const lumo::BankManager& /*bank*/) override {}
    void set_tempo(float bpm) override;
    void midi_learn_changed(int index, int state) override;

    bool is_built() const { return _built; }
    bool is_open() const { return _open; }
    int get_nbr_param() const { return _nbr_param; }
    // Null before the screen is built or for an index without a parameter.
    lumo::MetaControl* use_meta_control(int index);
    GuiEffect& use_effect_part() { return _effect; }
    // Changes from other threads wait here for the editor's thread.
    ParamInbox& use_inbox() { return _inbox; }

    // Follows the host's MIDI learn; its menu is the one a right click shows.
    MidiLearn& use_learn() { return _learn; }
    MidiLearnMenu& use_learn_menu() { return _learn_menu; }
    // Pops up the learn menu of a parameter at the cursor, through the
    // control that was clicked. Nothing without a MIDI manager or a parameter.
    void open_learn_menu(int index, gadu::ControlInterface& control);

    // For the screen's parts: binds the control and its listener to the
    // parameter and makes them the ones its changes reach.
    void bind_control(int index, gadu::ControlInterface& control, lumo::ListenerBase& listener);

private:
    bool build();
    bool is_param(int index) const { return index >= 0 && index < _nbr_param; }
    void close_window();
    void apply_param(int index, std::int32_t level);
    void apply_learn(int index, std::int32_t state);
    void detach_window();

    std::unique_ptr<lumo::HostGuiInterface> _host;
    lumo::DspInterface* _dsp = nullptr;
    gadu::WindowInterface* _window = nullptr;
    int _nbr_param = 0;
    lumo::MasterMgr _master;
    // The hidden stand-ins, so that every parameter has a control.
    std::vector<std::unique_ptr<lumo::ListenerBase>> _listeners;
    std::vector<std::unique_ptr<gadu::Knob>> _hidden;
    std::vector<lumo::MetaControl> _meta;
    // The group goes before the controls it holds.
    GuiEffect _effect;
    gadu::BackgroundItem _background;
    gadu::CtrlGroupItem _controls;
    ParamInbox _inbox;
    MidiLearn _learn{*this, _inbox};
    MidiLearnMenu _learn_menu{_learn};
    std::uint32_t _timer = 0;
    bool _built = false;
    bool _open = false;
};

}  // namespace zarquette
