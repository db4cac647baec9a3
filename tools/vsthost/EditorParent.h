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
    void set_size(int width, int height);
    // Delivers pending window messages.
    void pump();

private:
    void* _window = nullptr;
};

}  // namespace vsthost
