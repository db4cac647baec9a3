#include "TestGainEditor.h"

#include <windows.h>

namespace testgain
{

TestGainEditor::~TestGainEditor()
{
    close();
}

bool TestGainEditor::is_available()
{
    return true;
}

bool TestGainEditor::open(void* parent)
{
    close();
    HWND window = CreateWindowExA(0, "STATIC", "TestGain", WS_CHILD | WS_VISIBLE, 0, 0, get_width(), get_height(),
                                  static_cast<HWND>(parent), nullptr, nullptr, nullptr);
    _window = window;
    return window != nullptr;
}

void TestGainEditor::close()
{
    if (_window != nullptr)
    {
        DestroyWindow(static_cast<HWND>(_window));
        _window = nullptr;
    }
}

}  // namespace testgain
