#include "gadu/OffscreenWindow.h"
#include "lumo/vst2/Vst2WinEditor.h"

namespace lumo
{

// No display here: the editor draws into memory, so that hosts and tests on
// this platform drive the same editor paths as on Windows.
std::unique_ptr<gadu::WindowInterface> create_editor_window()
{
    return std::make_unique<gadu::OffscreenWindow>(100, 100);
}

}  // namespace lumo
