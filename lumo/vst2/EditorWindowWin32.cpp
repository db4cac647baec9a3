#include "lumo/vst2/Vst2WinEditor.h"

#include "gadu/WindowInterface.h"

namespace lumo
{

// The toolkit's Win32 window is not part of the build yet: until it is, the
// plug-in offers no editor on Windows rather than one that shows nothing.
std::unique_ptr<gadu::WindowInterface> create_editor_window()
{
    return nullptr;
}

}  // namespace lumo
