#include "EditorParent.h"

namespace vsthost
{

// The Linux build links no window system: editors are not opened there.
EditorParent::EditorParent() = default;

EditorParent::~EditorParent() = default;

void EditorParent::set_size(int, int)
{
}

void EditorParent::pump()
{
}

}  // namespace vsthost
