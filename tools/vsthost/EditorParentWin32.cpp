#include "EditorParent.h"

#include <windows.h>

namespace vsthost
{

namespace
{

const char* const class_name = "VsthostEditorParent";

const char* register_class()
{
    WNDCLASSA wc{};
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = GetModuleHandleA(nullptr);
    wc.lpszClassName = class_name;
    wc.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    RegisterClassA(&wc);
    return class_name;
}

}  // namespace

EditorParent::EditorParent()
{
    static const char* const registered = register_class();
    _window = CreateWindowExA(0, registered, "vsthost editor", WS_OVERLAPPEDWINDOW | WS_VISIBLE, CW_USEDEFAULT,
                              CW_USEDEFAULT, 640, 480, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

EditorParent::~EditorParent()
{
    if (_window != nullptr)
    {
        DestroyWindow(static_cast<HWND>(_window));
        pump();
    }
}

void EditorParent::set_size(int width, int height)
{
    RECT r{0, 0, width, height};
    AdjustWindowRect(&r, WS_OVERLAPPEDWINDOW, FALSE);
    SetWindowPos(static_cast<HWND>(_window), nullptr, 0, 0, r.right - r.left, r.bottom - r.top,
                 SWP_NOMOVE | SWP_NOZORDER);
}

void EditorParent::pump()
{
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE))
    {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
}

}  // namespace vsthost
