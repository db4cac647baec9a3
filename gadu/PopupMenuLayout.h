#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace gadu
{

class MenuList;
class MenuNodeInterface;

// A menu the toolkit draws itself (where the platform has no menus of its
// own): the rows one level of a menu model shows, where they lie, which of
// them the user can choose, and how the arrow keys move between them.
// Hidden nodes take no row; labels are cut as on the platform menus.
class PopupMenuLayout
{
public:
    enum class Kind
    {
        item,
        submenu,
        separator,
        // A grayed line that names the group below it.
        title
    };

    struct Row
    {
        const MenuNodeInterface* node = nullptr;
        Kind kind = Kind::item;
        std::string text;
        bool enabled = true;
        bool checked = false;
        std::int32_t y1 = 0;
        std::int32_t y2 = 0;
    };

    // The longest label a row shows.
    static constexpr std::size_t kMaxLabel = 127;
    // Room left of the text for a check mark and right of it for a submenu's arrow.
    static constexpr std::int32_t kMargin = 20;
    static constexpr std::int32_t kPadding = 3;
    static constexpr std::int32_t kSeparatorHeight = 7;

    // text_width: the pixels a text takes in the menu's font.
    void build(const MenuList& list, std::int32_t line_height,
               const std::function<std::int32_t(const std::string&)>& text_width);

    const std::vector<Row>& use_rows() const { return _rows; }
    std::int32_t get_width() const { return _width; }
    std::int32_t get_height() const { return _height; }

    // The row under the point (menu pixels), or -1.
    int row_at(std::int32_t x, std::int32_t y) const;
    // Items and submenus that are not disabled.
    bool is_choosable(int row) const;
    // The next choosable row from `from` in direction +1 or -1, going round
    // the ends; from -1 downwards starts at the top, upwards at the bottom.
    // -1 when no row is choosable.
    int next(int from, int direction) const;

private:
    std::vector<Row> _rows;
    std::int32_t _width = 0;
    std::int32_t _height = 0;
};

}  // namespace gadu
