#pragma once

namespace gadu
{

class MenuItem;

// What happens when the user chooses an item. It runs after the platform's
// menu has gone, so it may open another menu or a text field.
class MenuActionInterface
{
public:
    virtual ~MenuActionInterface() = default;
    virtual void on_chosen(MenuItem& item) = 0;
};

}  // namespace gadu
