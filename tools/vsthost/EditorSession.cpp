#include "EditorSession.h"

#include "CpuClock.h"
#include "MousePlayer.h"
#include "WindowProbe.h"

#include <iomanip>
#include <stdexcept>
#include <thread>

namespace vsthost
{

namespace
{

// Messages are delivered every few milliseconds, so the editor's own timers
// run close to their rate; the idle call comes at the pace hosts commonly use.
constexpr auto pump_pause = std::chrono::milliseconds(5);
constexpr auto idle_period = std::chrono::milliseconds(1000 / EditorSession::idle_calls_per_second);

// An editor's size as the interface can carry it (16-bit rectangle fields).
bool is_usable_size(int width, int height)
{
    return width > 0 && height > 0 && width <= 32767 && height <= 32767;
}

}  // namespace

EditorSession::EditorSession(HostedPlugin& plugin) : _plugin(plugin)
{
    _plugin.set_editor_listener(this);
}

EditorSession::~EditorSession()
{
    close();
    _parent.reset();
    _plugin.set_editor_listener(nullptr);
}

void EditorSession::apply_plugin_rect()
{
    lumo::vst2::ERect rect{};
    if (_plugin.get_editor_rect(rect) && is_usable_size(rect.right - rect.left, rect.bottom - rect.top))
    {
        _has_plugin_size = true;
        size_window(rect.right - rect.left, rect.bottom - rect.top);
    }
}

void EditorSession::open()
{
    if (!_plugin.has_editor())
    {
        throw std::runtime_error("the plug-in has no editor");
    }
    if (_editor_open)
    {
        return;
    }
    if (!_parent)
    {
        _parent = std::make_unique<EditorParent>();
    }
    if (!_parent->is_open())
    {
        _parent.reset();
        throw std::runtime_error("no window for the editor: this build has no window system, or no display is there");
    }
    _width = default_width;
    _height = default_height;
    _has_plugin_size = false;
    // Some editors know their size only once open: ask before and after.
    apply_plugin_rect();
    if (!_plugin.open_editor(_parent->use_handle()))
    {
        throw std::runtime_error("the editor did not open");
    }
    _editor_open = true;
    restart_load();
    apply_plugin_rect();
    _parent->pump();
}

void EditorSession::close()
{
    if (_editor_open)
    {
        _plugin.close_editor();
        _parent->pump();
        _editor_open = false;
    }
}

bool EditorSession::run_for(int ms)
{
    using clock = std::chrono::steady_clock;
    const auto end = clock::now() + std::chrono::milliseconds(ms);
    auto next_idle = clock::now();
    while (_editor_open && !_parent->is_close_requested())
    {
        _parent->pump();
        const auto now = clock::now();
        // A plug-in that asks for idle time gets it at the next round, not
        // from inside its own call.
        const int idle_requests = _plugin.use_requests().idle.load();
        if (now >= next_idle || idle_requests != _idle_requests_served)
        {
            _idle_requests_served = idle_requests;
            _plugin.dispatch(lumo::vst2::PluginOp::edit_idle);
            next_idle = now + idle_period;
        }
        if (now >= end)
        {
            return true;
        }
        std::this_thread::sleep_for(pump_pause);
    }
    return false;
}

void EditorSession::play(const std::vector<MouseScript::Step>& steps, int step_ms)
{
    if (!_editor_open)
    {
        return;
    }
    MousePlayer player(_parent->use_handle());
    for (const MouseScript::Step& step : steps)
    {
        player.play(step);
        if (!run_for(step.action == MouseScript::Action::wait ? step.amount : step_ms))
        {
            return;
        }
    }
}

Image EditorSession::capture()
{
    return _parent ? WindowProbe::capture(_parent->use_handle()) : Image();
}

void EditorSession::restart_load()
{
    _opened_at = std::chrono::steady_clock::now();
    _thread_cpu_at_open = CpuClock::get_thread_seconds();
    _process_cpu_at_open = CpuClock::get_process_seconds();
}

double EditorSession::measure_host_loop(int ms)
{
    close();
    if (!_parent)
    {
        return 0.0;
    }
    using clock = std::chrono::steady_clock;
    const auto start = clock::now();
    const double cpu = CpuClock::get_thread_seconds();
    while (clock::now() < start + std::chrono::milliseconds(ms))
    {
        _parent->pump();
        std::this_thread::sleep_for(pump_pause);
    }
    const double wall = std::chrono::duration<double>(clock::now() - start).count();
    return 100.0 * (CpuClock::get_thread_seconds() - cpu) / wall;
}

double EditorSession::time_full_repaint()
{
    if (!_editor_open)
    {
        return 0.0;
    }
    _parent->invalidate_all();
    const auto start = std::chrono::steady_clock::now();
    _parent->paint_now();
    _plugin.dispatch(lumo::vst2::PluginOp::edit_idle);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void EditorSession::print_load(std::ostream& out) const
{
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - _opened_at).count();
    const auto line = [&](const char* what, double cpu) {
        out << what << cpu << " s in " << wall << " s (" << (wall > 0.0 ? 100.0 * cpu / wall : 0.0)
            << " % of one core)\n";
    };
    out << std::fixed << std::setprecision(3);
    line("editor thread CPU: ", CpuClock::get_thread_seconds() - _thread_cpu_at_open);
    line("process CPU: ", CpuClock::get_process_seconds() - _process_cpu_at_open);
    out << std::defaultfloat;
}

bool EditorSession::size_window(int width, int height)
{
    if (!_parent || !is_usable_size(width, height))
    {
        return false;
    }
    _width = width;
    _height = height;
    _parent->set_size(width, height);
    return true;
}

void EditorSession::on_edit_request(lumo::vst2::HostOp op, int index, float value)
{
    _log.add(op, index, value);
}

}  // namespace vsthost
