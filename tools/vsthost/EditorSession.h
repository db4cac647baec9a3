#pragma once

#include "EditLog.h"
#include "EditorParent.h"
#include "HostedPlugin.h"
#include "Image.h"
#include "MouseScript.h"

#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// A plug-in's editor open in a top-level window of the host, as a user sees
// it: sized from the editor's rectangle and resized when the editor asks,
// idled regularly from the window's thread, with every gesture and automation
// recorded. Everything runs on the thread that made the session.
class EditorSession : public EditorListenerInterface
{
public:
    explicit EditorSession(HostedPlugin& plugin);
    EditorSession(const EditorSession&) = delete;
    EditorSession& operator=(const EditorSession&) = delete;
    ~EditorSession() override;

    // Throws std::runtime_error when there is no editor, no window system or
    // the editor does not open. The window is made on the first call.
    void open();
    // Closes the editor; its window stays until the session ends, so a host
    // can open the editor again in it, as hosts do.
    void close();
    bool is_open() const { return _editor_open; }

    // Pumps messages and idles the editor for ms milliseconds; false as soon
    // as the user closed the window.
    bool run_for(int ms);
    // Plays the script, each step followed by step_ms of idling (and a wait
    // step by its own time).
    void play(const std::vector<MouseScript::Step>& steps, int step_ms);
    Image capture();
    void* use_window() { return _parent ? _parent->use_handle() : nullptr; }
    // The editor's client size as the host last set it.
    int get_width() const { return _width; }
    int get_height() const { return _height; }
    // False when the plug-in gave no usable rectangle and the window keeps
    // the host's default size.
    bool has_plugin_size() const { return _has_plugin_size; }
    const EditLog& use_log() const { return _log; }
    // The processor time since the editor opened, of this thread (the
    // editor's drawing and input, and the host's idling) and of the whole
    // process (with audio), each as a share of one core:
    // "editor thread CPU: 0.012 s in 10.0 s (0.12 % of one core)".
    void print_load(std::ostream& out) const;
    // Counts the load from now on.
    void restart_load();
    // The host's own message loop at the session's pace for ms milliseconds
    // with the editor closed (its window stays): the share of one core that
    // an open editor's idle cost is measured against.
    double measure_host_loop(int ms);
    // Makes the editor's whole window dirty and answers the seconds the
    // editor takes to paint it: the window system's paint (Windows) and the
    // host's next idle call (X11, where the editor paints in idle).
    double time_full_repaint();

    // The pace of the host's idle calls while the session runs.
    static constexpr int idle_calls_per_second = 50;

    bool size_window(int width, int height) override;
    void on_edit_request(lumo::vst2::HostOp op, int index, float value) override;

    // The size of the window when the editor gives no rectangle.
    static constexpr int default_width = 640;
    static constexpr int default_height = 480;

private:
    void apply_plugin_rect();

    HostedPlugin& _plugin;
    std::unique_ptr<EditorParent> _parent;
    EditLog _log;
    int _width = default_width;
    int _height = default_height;
    bool _has_plugin_size = false;
    bool _editor_open = false;
    // The plug-in's requests for idle time answered so far.
    int _idle_requests_served = 0;
    std::chrono::steady_clock::time_point _opened_at;
    double _thread_cpu_at_open = 0.0;
    double _process_cpu_at_open = 0.0;
};

}  // namespace vsthost
