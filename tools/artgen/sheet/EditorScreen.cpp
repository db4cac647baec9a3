#include "EditorScreen.h"

#include "Layout.h"
#include "Shapes.h"

#include "gadu/FontFactory.h"
#include "gadu/PicDataFactory.h"

#include <cmath>
#include <stdexcept>

namespace artgen
{

namespace
{

// Indices into the loaded pictures.
constexpr int background_pic = 0;
constexpr int first_knob_pic = 1;
constexpr int first_switch_pic = 5;
constexpr int arrow_pic = 7;

}  // namespace

EditorScreen::EditorScreen()
{
    _pics.reserve(8);
    _pictures.reserve(8);
    load("bkg", 0, 0);
    for (const KnobLayout& k : knob_layouts)
    {
        load(k.resource, k.hot_x, k.hot_y);
    }
    load("ff_01_00", 0, 0);
    // The "on" picture's hot spot lies left of it, so it lands further right.
    load("ff_01_01", -switch_on_shift, 0);
    load("arw_06", arrow_hot, arrow_hot);
    _font = gadu::FontFactory::use_instance().create("font_03");
    if (!_font)
    {
        throw std::runtime_error("artgen::EditorScreen::EditorScreen() : Cannot load the font.");
    }
}

void EditorScreen::load(const char* name, std::int32_t hot_x, std::int32_t hot_y)
{
    std::unique_ptr<gadu::PicDataInterface> pic = gadu::PicDataFactory::use_instance().create(name);
    if (!pic)
    {
        throw std::runtime_error(std::string("artgen::EditorScreen::load() : Cannot load ") + name + ".");
    }
    _pictures.emplace_back(pic.get());
    _pictures.back().set_hot_spot(hot_x, hot_y);
    _pics.push_back(std::move(pic));
}

void EditorScreen::draw(gadu::MemoryRenderingBuffer& buffer, std::int32_t x, std::int32_t y,
                        const double (&values)[4], int switch_state, int dragged) const
{
    const std::int32_t w = buffer.get_width(), h = buffer.get_height();
    _pictures[background_pic].draw(gadu::Rect::of_size(-x, -y, w, h), buffer);
    for (int i = 0; i < 4; ++i)
    {
        draw_knob(buffer, i, values[i], x + knob_layouts[i].centre_x, y + knob_layouts[i].centre_y);
    }
    draw_switch(buffer, switch_state, x + switch_x, y + switch_y);
    if (dragged >= 0 && dragged < 4)
    {
        const KnobLayout& k = knob_layouts[dragged];
        _pictures[arrow_pic].draw_at(-(x + k.centre_x), -(y + k.centre_y), w, h, buffer);
    }
}

void EditorScreen::draw_knob(gadu::MemoryRenderingBuffer& buffer, int knob, double value, std::int32_t x,
                             std::int32_t y) const
{
    const double turns = value * knob_angle_span + knob_layouts[knob].angle_offset;
    _pictures[static_cast<std::size_t>(first_knob_pic + knob)].draw_rotated(
        -x, -y, buffer.get_width(), buffer.get_height(), 2.0 * pi * turns, buffer);
}

void EditorScreen::draw_switch(gadu::MemoryRenderingBuffer& buffer, int state, std::int32_t x, std::int32_t y) const
{
    _pictures[static_cast<std::size_t>(first_switch_pic + (state != 0 ? 1 : 0))].draw(
        gadu::Rect::of_size(-x, -y, buffer.get_width(), buffer.get_height()), buffer);
}

std::int32_t EditorScreen::draw_text(gadu::MemoryRenderingBuffer& buffer, const std::string& text, std::int32_t x,
                                     std::int32_t y, std::uint32_t colour) const
{
    std::int32_t pen = x;
    for (unsigned char c : text)
    {
        const gadu::FontInterface::Glyph& g = _font->use_glyphs().at(c);
        _font->draw_glyph_area(gadu::Rect{g.x_start, 0, g.x_start + g.width, _font->get_glyph_height()}, pen, y,
                               buffer, colour);
        pen += g.width;
    }
    return pen - x;
}

}  // namespace artgen
