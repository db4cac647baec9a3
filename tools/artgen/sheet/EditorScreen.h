#pragma once

#include "gadu/FontInterface.h"
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataInterface.h"
#include "gadu/Picture.h"

#include <memory>
#include <string>
#include <vector>

namespace artgen
{

// The editor's pictures as the toolkit loads them from the embedded resources,
// drawn with the toolkit's own operations: the background, each knob body
// turned about its pivot, the switch's state pictures, the drag pointer and
// text in the font strip. What it draws is what the editor will show.
class EditorScreen
{
public:
    // Loads every picture and the font; throws std::runtime_error when one is
    // missing or refused.
    EditorScreen();

    // The screen at (x, y) of the buffer: knobs at the given values (0 to 1),
    // the switch in state 0 or 1, and the drag pointer over knob dragged (0 to
    // 3) or over none (-1).
    void draw(gadu::MemoryRenderingBuffer& buffer, std::int32_t x, std::int32_t y, const double (&values)[4],
              int switch_state, int dragged) const;

    // One knob body at a value, its pivot at (x, y) of the buffer.
    void draw_knob(gadu::MemoryRenderingBuffer& buffer, int knob, double value, std::int32_t x, std::int32_t y) const;
    // One switch picture with its top-left corner at (x, y).
    void draw_switch(gadu::MemoryRenderingBuffer& buffer, int state, std::int32_t x, std::int32_t y) const;
    // A line of text (ISO 8859-1) in the font strip, glyph after glyph;
    // returns its width.
    std::int32_t draw_text(gadu::MemoryRenderingBuffer& buffer, const std::string& text, std::int32_t x,
                           std::int32_t y, std::uint32_t colour) const;

private:
    void load(const char* name, std::int32_t hot_x, std::int32_t hot_y);

    std::vector<std::unique_ptr<gadu::PicDataInterface>> _pics;
    std::vector<gadu::Picture> _pictures;  // in load order: background, knobs 1 to 4, switch states, arrow
    std::unique_ptr<gadu::FontInterface> _font;
};

}  // namespace artgen
