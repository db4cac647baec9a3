#include "gadu/x11/WindowX11.h"
#include "lumo/vst2/Vst2WinEditor.h"

namespace lumo
{

// The host hands effEditOpen its X11 window; the editor opens a child there
// on a connection of its own, and the host's idle call drives it.
std::unique_ptr<gadu::WindowInterface> create_editor_window()
{
    auto window = std::make_unique<gadu::WindowX11>();
    window->set_content_size(100, 100);
    window->set_window_size(100, 100);
    return window;
}

}  // namespace lumo
