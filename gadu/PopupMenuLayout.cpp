#include "gadu/PopupMenuLayout.h"

#include "gadu/MenuDelimiter.h"
#include "gadu/MenuItem.h"
#include "gadu/MenuList.h"

#include <algorithm>

namespace gadu
{

namespace
{

PopupMenuLayout::Row describe(const MenuNodeInterface& node)
{
    PopupMenuLayout::Row row;
    row.node = &node;
    if (const auto* list = dynamic_cast<const MenuList*>(&node))
    {
        row.kind = PopupMenuLayout::Kind::submenu;
        row.text = list->get_label();
        row.checked = list->is_checked();
    }
    else if (const auto* item = dynamic_cast<const MenuItem*>(&node))
    {
        row.text = item->get_label();
        row.enabled = !item->is_disabled();
        row.checked = item->is_checked();
    }
    else if (const auto* delimiter = dynamic_cast<const MenuDelimiter*>(&node))
    {
        row.enabled = false;
        row.kind = delimiter->has_title() ? PopupMenuLayout::Kind::title : PopupMenuLayout::Kind::separator;
        if (delimiter->has_title())
        {
            row.text = "---- " + delimiter->get_label() + " ----";
        }
    }
    else
    {
        // A node kind no menu knows is left out.
        row.node = nullptr;
    }
    row.text = row.text.substr(0, PopupMenuLayout::kMaxLabel);
    return row;
}

}  // namespace

void PopupMenuLayout::build(const MenuList& list, std::int32_t line_height,
                            const std::function<std::int32_t(const std::string&)>& text_width)
{
    _rows.clear();
    std::int32_t y = kPadding;
    std::int32_t widest = 0;
    for (const auto& node : list.use_nodes())
    {
        if (!node->is_visible())
        {
            continue;
        }
        Row row = describe(*node);
        if (row.node == nullptr)
        {
            continue;
        }
        row.y1 = y;
        y += row.kind == Kind::separator ? kSeparatorHeight : line_height + 2 * kPadding;
        row.y2 = y;
        widest = std::max(widest, text_width(row.text));
        _rows.push_back(std::move(row));
    }
    _width = widest + 2 * kMargin;
    _height = y + kPadding;
}

int PopupMenuLayout::row_at(std::int32_t x, std::int32_t y) const
{
    if (x < 0 || x >= _width)
    {
        return -1;
    }
    for (std::size_t i = 0; i < _rows.size(); ++i)
    {
        if (y >= _rows[i].y1 && y < _rows[i].y2)
        {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool PopupMenuLayout::is_choosable(int row) const
{
    if (row < 0 || row >= static_cast<int>(_rows.size()))
    {
        return false;
    }
    const Row& r = _rows[static_cast<std::size_t>(row)];
    return r.enabled && (r.kind == Kind::item || r.kind == Kind::submenu);
}

int PopupMenuLayout::next(int from, int direction) const
{
    const int count = static_cast<int>(_rows.size());
    if (count == 0)
    {
        return -1;
    }
    int row = from < 0 ? (direction > 0 ? -1 : count) : from;
    for (int step = 0; step < count; ++step)
    {
        row = ((row + direction) % count + count) % count;
        if (is_choosable(row))
        {
            return row;
        }
    }
    return -1;
}

}  // namespace gadu
