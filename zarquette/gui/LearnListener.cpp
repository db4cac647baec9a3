#include "zarquette/gui/LearnListener.h"

#include "gadu/ControlInterface.h"
#include "gadu/MouseMessage.h"
#include "zarquette/gui/ZarquetteGui.h"

namespace zarquette
{

// After the control has seen the press, so that the menu (modal on some
// platforms) pops up only once the click has been handled.
void LearnListener::after_message(const gadu::MessageInterface& message)
{
    ListenerBase::after_message(message);
    const auto* click = dynamic_cast<const gadu::MouseClick*>(&message);
    gadu::ControlInterface* control = use_control();
    if (click != nullptr && click->get_buttons() == gadu::mouse_button::right && _editor != nullptr
        && control != nullptr && control->is_enabled())
    {
        _editor->open_learn_menu(get_index(), *control);
    }
}

}  // namespace zarquette
