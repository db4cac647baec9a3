#include "gadu/win32/WindowWin32.h"
#include "lumo/vst2/Vst2WinEditor.h"

namespace lumo
{

std::unique_ptr<gadu::WindowInterface> create_editor_window()
{
    auto window = std::make_unique<gadu::WindowWin32>();
    window->set_content_size(100, 100);
    window->set_window_size(100, 100);
    return window;
}

}  // namespace lumo
