#include "EditorParent.h"

#include <windows.h>

namespace vsthost
{

namespace
{

const char* const class_name = "VsthostEditorParent";

LRESULT CALLBACK parent_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam)
{
    if (message == WM_NCCREATE)
    {
        SetWindowLongPtrA(window, GWLP_USERDATA,
                          reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams));
    }
    if (message == WM_CLOSE)
    {
        // Destroying the window now would pull the editor's child window
        // away under the plug-in: the host closes the editor first.
        auto* parent = reinterpret_cast<EditorParent*>(GetWindowLongPtrA(window, GWLP_USERDATA));
        if (parent != nullptr)
        {
            parent->request_close();
        }
        return 0;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

const char* register_class()
{
    WNDCLASSA wc{};
    wc.lpfnWndProc = &parent_proc;
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
                              CW_USEDEFAULT, 640, 480, nullptr, nullptr, GetModuleHandleA(nullptr), this);
}

EditorParent::~EditorParent()
{
    if (_window != nullptr)
    {
        SetWindowLongPtrA(static_cast<HWND>(_window), GWLP_USERDATA, 0);
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

void EditorParent::invalidate_all()
{
    RedrawWindow(static_cast<HWND>(_window), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void EditorParent::paint_now()
{
    RedrawWindow(static_cast<HWND>(_window), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
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
