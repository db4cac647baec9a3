#pragma once

#include "lumo/vst2/AEffEditor.h"

#include <atomic>
#include <memory>

namespace gadu
{
class WindowInterface;
}

namespace lumo
{

class GuiInterface;

// The editor as a VST 2 host sees it: answers the host's editor requests by
// driving the plug-in's editor and the toolkit window it draws into, and
// carries tempo changes from the audio thread to the editor's thread. The
// user's "Editor Zoom" enlarges the window (not the editor's own layout): it
// is read while the editor is closed, when the host asks for the rectangle
// and again when it opens the editor.
class Vst2WinEditor : public AEffEditor
{
public:
    // The window is the editor's for good: the editor is given it here.
    Vst2WinEditor(AudioEffect* effect, GuiInterface& gui, std::unique_ptr<gadu::WindowInterface> window);
    ~Vst2WinEditor() override;

    bool get_rect(vst2::ERect** rect) override;
    bool open(void* parent) override;
    void close() override;
    void idle() override;

    // From the audio thread: the editor learns the latest tempo at its next idle.
    void post_tempo(float bpm);
    gadu::WindowInterface& use_window() const { return *_window; }

private:
    void update();
    void read_zoom();

    std::unique_ptr<gadu::WindowInterface> _window;
    GuiInterface& _gui;
    vst2::ERect _rect{};
    // Written by the audio thread, taken by the editor's: the tempo first,
    // then the flag, so that whoever sees the flag sees the tempo.
    std::atomic<double> _pending_tempo{0.0};
    std::atomic<bool> _update_pending{false};
};

// The platform's window for an editor, 100 x 100 until the editor sizes it;
// null where the platform has none (the plug-in then offers no editor).
std::unique_ptr<gadu::WindowInterface> create_editor_window();

}  // namespace lumo
