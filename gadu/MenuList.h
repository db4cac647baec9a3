#pragma once

#include "gadu/MenuNodeInterface.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace gadu
{

class MenuItem;

// An ordered list of entries, shown as a submenu under its label. It owns its
// entries.
class MenuList : public MenuNodeInterface
{
public:
    explicit MenuList(std::string label = std::string()) : MenuNodeInterface(std::move(label)) {}

    // Appends the node and answers it, so that entries are built in one line.
    template <typename Node>
    Node& add(std::unique_ptr<Node> node)
    {
        Node& added = *node;
        _nodes.push_back(std::move(node));
        return added;
    }

    const std::vector<std::unique_ptr<MenuNodeInterface>>& use_nodes() const { return _nodes; }

    bool is_checked() const { return _checked; }
    void set_checked(bool checked) { _checked = checked; }

    // The item with this id, searched depth first: the submenus of each list
    // before its own items. Null when there is none (0 never names an item).
    MenuItem* find_item(std::uint32_t id) const;

private:
    std::vector<std::unique_ptr<MenuNodeInterface>> _nodes;
    bool _checked = false;
};

}  // namespace gadu
