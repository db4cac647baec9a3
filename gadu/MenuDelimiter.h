#pragma once

#include "gadu/MenuNodeInterface.h"

#include <string>
#include <utility>

namespace gadu
{

// A separator line; with a title (the label) it becomes a grayed line that
// names the group of entries below it.
class MenuDelimiter : public MenuNodeInterface
{
public:
    explicit MenuDelimiter(std::string title = std::string()) : MenuNodeInterface(std::move(title)) {}

    bool has_title() const { return !get_label().empty(); }
};

}  // namespace gadu
