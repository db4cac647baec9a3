#include "lumo/vst2/AEffEditor.h"

namespace lumo
{

bool AEffEditor::get_rect(vst2::ERect** rect)
{
    if (rect != nullptr)
    {
        *rect = nullptr;
    }
    return false;
}

bool AEffEditor::open(void* parent)
{
    _parent = parent;
    return false;
}

void AEffEditor::close()
{
    _parent = nullptr;
}

void AEffEditor::idle()
{
}

}  // namespace lumo
