#include "zarquette/gui/ZarquetteGui.h"

#include "gadu/MenuRequest.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerMessage.h"
#include "gadu/WindowInterface.h"
#include "lumo/DspInterface.h"
#include "lumo/HostGuiInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/midi/MidiMgr.h"

#include <cmath>
#include <stdexcept>

namespace zarquette
{

const std::array<lumo::GraphRscMixin::PictureEntry, 8> ZarquetteGui::picture_table{{
    {"arw_06", 9, 9},
    {"bkg", 0, 0},
    {"ff_01_00", 0, 0},
    {"ff_01_01", -8, 0},
    {"kn_01_spn", 36, 34},
    {"kn_02_spn", 18, 22},
    {"kn_03_spn", 20, 19},
    {"kn_04_spn", 29, 27},
}};

const std::array<const char*, 1> ZarquetteGui::font_table{{"font_03"}};

ZarquetteGui::ZarquetteGui() : _effect(*this)
{
}

ZarquetteGui::~ZarquetteGui()
{
    // A host that deletes the plug-in with the editor still open: the window
    // outlives this editor, so it must hold nothing of it afterwards. The
    // audio side is gone already and is not told.
    close_window();
    detach_window();
}

void ZarquetteGui::init()
{
    if (_host != nullptr)
    {
        _host->on_reserved();
    }
    if (!load_pictures(picture_table.data(), static_cast<int>(picture_table.size()))
        || !load_fonts(font_table.data(), static_cast<int>(font_table.size())))
    {
        throw std::runtime_error("ZarquetteGui::init() : Cannot initialize GUI.");
    }
}

void ZarquetteGui::set_default_state()
{
    if (_built)
    {
        return;
    }
    if (!build())
    {
        throw std::runtime_error("ZarquetteGui::set_default_state() : Cannot build GUI.");
    }
    _built = true;
}

void ZarquetteGui::set_dsp(lumo::DspInterface* dsp)
{
    _dsp = dsp;
    _nbr_param = dsp != nullptr ? dsp->get_nbr_param() : 0;
}

void ZarquetteGui::set_window(gadu::WindowInterface* window)
{
    detach_window();
    _window = window;
    if (_built && window != nullptr)
    {
        window->set_background_root(&_background);
        window->set_control_root(&_controls);
        window->set_content_size(width, height);
        window->set_window_size(width, height);
    }
}

void ZarquetteGui::get_size(int& w, int& h) const
{
    w = width;
    h = height;
}

bool ZarquetteGui::build()
{
    // The window may come later: set_window hands it the trees.
    if (_dsp == nullptr || _nbr_param <= 0)
    {
        return false;
    }
    _meta.assign(static_cast<std::size_t>(_nbr_param), lumo::MetaControl());
    for (int i = 0; i < _nbr_param; ++i)
    {
        _listeners.push_back(std::make_unique<lumo::ListenerBase>());
        _hidden.push_back(std::make_unique<gadu::Knob>());
        bind_control(i, *_hidden.back(), *_listeners.back());
    }
    _inbox.set_up(
        _nbr_param, [this](int index, std::int32_t level) { apply_param(index, level); },
        [this](int index, std::int32_t state) { apply_learn(index, state); });
    _learn.set_up(_nbr_param);
    _master.host = _host.get();
    _master.meta_controls = _meta.data();
    _master.dsp = _dsp;
    if (!_effect.set_up(_controls))
    {
        return false;
    }
    const gadu::Picture* background = use_picture("bkg");
    if (background == nullptr)
    {
        return false;
    }
    _background.set_picture(*background);
    _background.set_position(0, 0);
    _controls.set_position(0, 0);
    // Now that the trees exist, the window gets them.
    _built = true;
    set_window(_window);
    return true;
}

void ZarquetteGui::bind_control(int index, gadu::ControlInterface& control, lumo::ListenerBase& listener)
{
    if (!is_param(index) || _meta.empty())
    {
        return;
    }
    listener.set_host(_host.get());
    listener.bind(index, &_dsp->use_param(index));
    _meta[static_cast<std::size_t>(index)].bind(&control, &listener);
}

lumo::MetaControl* ZarquetteGui::use_meta_control(int index)
{
    return is_param(index) && !_meta.empty() ? &_meta[static_cast<std::size_t>(index)] : nullptr;
}

int ZarquetteGui::open(void* parent)
{
    if (!_built || _window == nullptr)
    {
        return -1;
    }
    const bool resizable = _host != nullptr && _host->get_setting_num("can_resize_window") != 0.0;
    _window->set_resizable(resizable);
    // What waits in the inbox stays: a parameter the host holds refuses the
    // refresh's low level, and the waiting change brings the host's level.
    for (lumo::MetaControl& meta : _meta)
    {
        if (const lumo::NormalizedParamInterface* param = meta.use_param())
        {
            meta.use_control()->set_default_value(param->default_norm);
        }
        meta.refresh();
    }
    const int result = _window->open(parent);
    _open = result == 0;
    if (_open)
    {
        // Through the roots' own handling, which keeps their visible flags:
        // the last close cleared them.
        const gadu::ShowObject show(true);
        _background.handle_message(show);
        _controls.handle_message(show);
        // The controls show the learn states as they are now (a map loaded
        // from the settings file included), from the first frame on.
        _learn.forget_shown();
        if (const lumo::MidiMgr* mgr = _host != nullptr ? _host->use_midi_mgr() : nullptr)
        {
            _learn.poll(*mgr, 0.0);
            _inbox.take();
        }
        // Often enough that automation looks smooth, seldom enough to cost
        // nothing. The learn follower empties the inbox after its poll.
        _window->handle_message(gadu::SetTimer(&_learn, 0.02f, _timer));
    }
    return result;
}

void ZarquetteGui::close()
{
    if (_dsp != nullptr)
    {
        _dsp->on_gui_close();
    }
    close_window();
}

void ZarquetteGui::close_window()
{
    if (_window != nullptr && _open)
    {
        _window->disconnect_tree();
        _window->close();
    }
    _open = false;
}

// Any thread may change a parameter: the control follows on the editor's
// thread, at the inbox's next take (or at the next open, which reads every
// parameter).
void ZarquetteGui::param_changed(int index, float value, int level)
{
    // A normalized value is never NaN; one that is would poison the control's
    // drag arithmetic, so the control keeps what it shows.
    if (!std::isnan(value))
    {
        _inbox.post_param(index, level);
    }
}

// The control takes the parameter's latest value. One the control shows
// already (the echo of the user's own gesture) changes nothing, so that a
// late echo never pulls a knob back while it is dragged.
void ZarquetteGui::apply_param(int index, std::int32_t level)
{
    lumo::MetaControl* meta = use_meta_control(index);
    const lumo::NormalizedParamInterface* param = meta != nullptr ? meta->use_param() : nullptr;
    if (param == nullptr)
    {
        return;
    }
    const double value = param->get_norm();
    if (static_cast<float>(meta->use_control()->get_value()) != static_cast<float>(value))
    {
        meta->update(value, level);
    }
}

void ZarquetteGui::set_tempo(float /*bpm*/)
{
    if (lumo::MetaControl* meta = use_meta_control(0))
    {
        meta->refresh();
    }
}

void ZarquetteGui::midi_learn_changed(int index, int state)
{
    _inbox.post_learn(index, state);
}

// A bound control shows its marker, a waiting one blinks it.
void ZarquetteGui::apply_learn(int index, std::int32_t state)
{
    if (lumo::MetaControl* meta = use_meta_control(index))
    {
        gadu::ControlInterface* control = meta->use_control();
        control->set_learn_state(state);
        const bool lit = state == MidiLearn::bound || (state == MidiLearn::waiting && _learn.is_blink_lit());
        control->set_highlight_state(GuiEffect::learn_marker, lit);
        control->request_redraw();
    }
}

void ZarquetteGui::open_learn_menu(int index, gadu::ControlInterface& control)
{
    lumo::MidiMgr* mgr = _host != nullptr ? _host->use_midi_mgr() : nullptr;
    if (mgr == nullptr || !is_param(index))
    {
        return;
    }
    _learn_menu.prepare(*mgr, index);
    control.handle_message(gadu::MenuRequest(&_learn_menu, 0, 0));
}

void ZarquetteGui::detach_window()
{
    if (_window == nullptr)
    {
        return;
    }
    if (_window->use_background_root() == &_background)
    {
        _window->set_background_root(nullptr);
    }
    if (_window->use_control_root() == &_controls)
    {
        _window->set_control_root(nullptr);
    }
}

}  // namespace zarquette
