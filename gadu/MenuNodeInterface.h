#pragma once

#include <string>
#include <utility>

namespace gadu
{

// One entry of a pop-up menu: a submenu, an item or a separator. A hidden node
// stays in the model, so that a control can build its menu once and only
// switch entries on and off.
class MenuNodeInterface
{
public:
    virtual ~MenuNodeInterface() = default;
    MenuNodeInterface(const MenuNodeInterface&) = delete;
    MenuNodeInterface& operator=(const MenuNodeInterface&) = delete;

    const std::string& get_label() const { return _label; }
    void set_label(std::string label) { _label = std::move(label); }
    bool is_visible() const { return _visible; }
    void set_visible(bool visible) { _visible = visible; }

protected:
    explicit MenuNodeInterface(std::string label) : _label(std::move(label)) {}

private:
    std::string _label;
    bool _visible = true;
};

}  // namespace gadu
