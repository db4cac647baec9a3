#pragma once

namespace vsthost
{

// A top-level window of the platform that hosts a plug-in's editor, with the
// message pumping an editor needs while it is open.
class EditorParent
{
public:
    EditorParent();
    EditorParent(const EditorParent&) = delete;
    EditorParent& operator=(const EditorParent&) = delete;
    ~EditorParent();

    // False where this build has no window system, or none could be reached.
    bool is_open() const { return _window != nullptr; }
    // The native handle to give the plug-in.
    void* use_handle() { return _window; }
    // Sizes the window so that its client area is width x height.
    void set_size(int width, int height);
    // Delivers pending window messages.
    void pump();
    // Makes the whole window and its children dirty; the editor hears of it
    // at once (the request has reached the window system).
    void invalidate_all();
    // Paints what is dirty now where the window system lets the host make it
    // (Windows); elsewhere the editor paints in its idle call.
    void paint_now();
    // True once the user asked to close the window. The window stays until
    // destruction, so the host can close the editor inside it first.
    bool is_close_requested() const { return _close_requested; }
    // For the window procedure.
    void request_close() { _close_requested = true; }

private:
    void* _window = nullptr;
    bool _close_requested = false;
};

}  // namespace vsthost
