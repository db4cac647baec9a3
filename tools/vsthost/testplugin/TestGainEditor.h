#pragma once

#include <cstdint>

namespace testgain
{

class TestGain;

// The test plug-in's editor where the platform has windows: a child window
// that draws the gain as a bar and the phase as a lamp, so a host's captures
// show every parameter change. A click or drag in the bar sets the gain, a
// double click there restores 0 dB, a click on the lamp flips the phase, and a
// right click anywhere asks the host for a taller or the compact size. Every
// gesture reaches the host as begin edit, automation and end edit.
class TestGainEditor
{
public:
    static constexpr std::int16_t width = 240;
    static constexpr std::int16_t height = 120;
    static constexpr std::int16_t tall_height = 180;

    explicit TestGainEditor(TestGain& plugin) : _plugin(plugin) {}
    TestGainEditor(const TestGainEditor&) = delete;
    TestGainEditor& operator=(const TestGainEditor&) = delete;
    ~TestGainEditor();

    static bool is_available();

    // parent: the host's window. Answers false when no window could be made.
    bool open(void* parent);
    void close();
    bool is_open() const { return _window != nullptr; }
    // Redraws when a parameter changed since the last drawing: the host's
    // automation reaches the screen only through this call.
    void idle();
    // One message of the window, from its window procedure; false leaves it
    // to the default handling.
    bool handle(unsigned message, std::uintptr_t wparam, std::intptr_t lparam);

private:
    void paint();
    void press(int x, int y);
    void drag_to(int x);
    void end_drag();
    void toggle_size();

    TestGain& _plugin;
    void* _window = nullptr;
    bool _dragging = false;
    bool _tall = false;
    // The values of the last drawing, compared on idle.
    float _drawn_gain = -1.0f;
    float _drawn_phase = -1.0f;
};

}  // namespace testgain
