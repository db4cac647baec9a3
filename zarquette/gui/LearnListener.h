#pragma once

#include "lumo/gui/ListenerBase.h"

namespace zarquette
{

class ZarquetteGui;

// The listener of a control on the editor's screen: binds it to its parameter
// and turns a press of the right button alone into the control's MIDI learn
// menu. The control keeps its gestures for the other buttons; a right press
// during a left drag stays the drag's.
class LearnListener : public lumo::ListenerBase
{
public:
    void set_editor(ZarquetteGui* editor) { _editor = editor; }

    void after_message(const gadu::MessageInterface& message) override;

private:
    ZarquetteGui* _editor = nullptr;
};

}  // namespace zarquette
