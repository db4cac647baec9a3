#pragma once

namespace testgain
{

// The test plug-in's editor: a plain child window where the platform has one,
// so a host can exercise opening and closing an editor.
class TestGainEditor
{
public:
    TestGainEditor() = default;
    TestGainEditor(const TestGainEditor&) = delete;
    TestGainEditor& operator=(const TestGainEditor&) = delete;
    ~TestGainEditor();

    static bool is_available();
    static int get_width() { return 240; }
    static int get_height() { return 120; }

    // parent: the host's window. Answers false when no window could be made.
    bool open(void* parent);
    void close();
    bool is_open() const { return _window != nullptr; }

private:
    void* _window = nullptr;
};

}  // namespace testgain
