#pragma once

// The probe control of the tree's and the windows' tests: it writes what
// reaches it into a shared log, paints its hit rectangle in one colour and
// answers clicks as told. And the scene every window test of the toolkit
// builds, whatever the platform: a background of 8 x 8 squares in two colours
// and two probes over it, a and b, so that a test reads from the log what
// reached which control and from the pixels what the window shows.

#include "gadu/BackgroundItem.h"
#include "gadu/ControlInterface.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/GraphicMessage.h"
#include "gadu/KeyboardMessage.h"
#include "gadu/MenuActionInterface.h"
#include "gadu/MenuItem.h"
#include "gadu/MouseMessage.h"
#include "gadu/PicDataFactory.h"
#include "gadu/RenderingBufferInterface.h"
#include "gadu/ShowObject.h"
#include "gadu/TimerMessage.h"
#include "gadu/WindowInterface.h"

#include "tests/gadu/ApicImage.h"

#include <cfenv>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace gadu_test
{

using Log = std::vector<std::string>;

inline std::string describe(const gadu::Rect& r)
{
    return std::to_string(r.x1) + "," + std::to_string(r.y1) + "," + std::to_string(r.x2) + "," +
           std::to_string(r.y2);
}

// Fills the part of area that lies in the tile (both in window pixels) in a
// buffer whose pixel (0, 0) shows the tile's top-left corner.
inline void fill_tile(gadu::RenderingBufferInterface& buffer, const gadu::Rect& tile, const gadu::Rect& area,
                      std::uint32_t colour)
{
    const gadu::Rect part = area.intersected(tile);
    for (std::int32_t y = part.y1; y < part.y2; ++y)
    {
        for (std::int32_t x = part.x1; x < part.x2; ++x)
        {
            // Blue, green, red and the unused byte: the word's bytes in memory order.
            std::memcpy(buffer.pixels() + 4 * ((y - tile.y1) * buffer.get_width() + (x - tile.x1)), &colour, 4);
        }
    }
}

class ProbeControl : public gadu::ControlInterface
{
public:
    ProbeControl(std::string name, Log& log, const gadu::Rect& hit, std::uint32_t colour = 0)
        : _name(std::move(name)), _log(log), _colour(colour)
    {
        set_hit_rect(hit);
    }

    std::int32_t on_mouse_click(const gadu::MouseClick& m) override
    {
        rounding = std::fegetround();
        note("click " + at(m) + " b" + std::to_string(m.get_buttons()) + " d" + std::to_string(m.get_double_click()) +
             (m.get_modifiers() != 0 ? " m" + std::to_string(m.get_modifiers()) : ""));
        if (m.get_buttons() != 0 && capture_mode >= 0)
        {
            capture_result = handle_message(gadu::MouseCapture(this, capture_mode));
        }
        if (m.get_buttons() == 0 && capture_mode >= 0)
        {
            release_result = handle_message(gadu::MouseRelease(this));
        }
        return click_answer;
    }
    std::int32_t on_mouse_move(const gadu::MouseMove& m) override { return note("move " + at(m), 1); }
    std::int32_t on_mouse_wheel_move(const gadu::MouseWheelMove& m) override
    {
        return note("wheel " + std::to_string(m.get_delta()), 1);
    }
    std::int32_t on_mouse_direct_move(const gadu::MouseDirectMove& m) override { return note("direct " + at(m)); }
    std::int32_t on_mouse_capture_lost(const gadu::MouseCaptureLost&) override { return note("lost"); }
    std::int32_t on_redraw_begin(const gadu::RedrawBegin& m) override
    {
        return note("begin " + describe(m.get_region()));
    }
    std::int32_t on_redraw(const gadu::Redraw& m) override
    {
        fill_tile(*m.use_buffer(), m.get_region(), get_hit_rect().moved(get_x(), get_y()), _colour);
        return note("redraw " + describe(m.get_region()));
    }
    std::int32_t on_redraw_end(const gadu::RedrawEnd& m) override { return note("end " + describe(m.get_region())); }
    std::int32_t on_notify(const gadu::Notify& m) override
    {
        rounding = std::fegetround();
        return note("notify " + std::to_string(m.get_timer_id()));
    }
    std::int32_t on_text_input_finished(const gadu::TextInputFinished& m) override
    {
        return note("text " + m.get_text() + (m.is_accepted() ? " accepted" : " cancelled"));
    }
    void on_hide() override { note("hide"); }
    void set_highlight(bool on) override { note(on ? "highlight" : "unhighlight"); }

    // What the next click answers; with a capture mode a press captures the
    // mouse in that mode and a release lets it go.
    std::int32_t click_answer = 1;
    std::int32_t capture_mode = -1;
    std::int32_t capture_result = 99;
    std::int32_t release_result = 99;
    // The floating-point rounding mode in the last click or timer message.
    int rounding = -1;

private:
    // Writes a line and answers what the handler answers.
    std::int32_t note(const std::string& what, std::int32_t answer = 0)
    {
        _log.push_back(_name + " " + what);
        return answer;
    }
    template <typename Message>
    static std::string at(const Message& m)
    {
        return std::to_string(m.get_x()) + "," + std::to_string(m.get_y());
    }

    std::string _name;
    Log& _log;
    std::uint32_t _colour;
};

// A menu action that notes the item chosen in a log.
class RecordingAction : public gadu::MenuActionInterface
{
public:
    explicit RecordingAction(Log& log) : _log(log) {}
    void on_chosen(gadu::MenuItem& item) override { _log.push_back("chose " + item.get_label()); }

private:
    Log& _log;
};

struct WindowScene
{
    static constexpr std::uint32_t kDark = 0x102030u;
    static constexpr std::uint32_t kLight = 0x405060u;
    static constexpr std::uint32_t kColourA = 0xC02040u;
    static constexpr std::uint32_t kColourB = 0x20C040u;

    // Where the probes lie: a square of a_size at a, one of b_size at b.
    struct Layout
    {
        std::int32_t width, height, a_x, a_y, a_size, b_x, b_y, b_size;
    };
    static constexpr Layout kSmall{64, 48, 4, 4, 10, 30, 20, 16};
    static constexpr Layout kLarge{96, 64, 10, 10, 20, 50, 30, 16};

    explicit WindowScene(const Layout& l = kLarge)
        : layout(l), picture(make_apic(0, 8, l.width, l.height, {kDark, kLight}, squares(l)))
    {
        background.set_picture(gadu::Picture(picture.pic.get()));
        background.set_position(0, 0);
        a.set_position(l.a_x, l.a_y);
        b.set_position(l.b_x, l.b_y);
        controls.add_control(a);
        controls.add_control(b);
        controls.set_position(0, 0);
    }

    // Sizes the window for the scene, gives it the trees and shows them, as
    // an editor does before it opens the window.
    void attach(gadu::WindowInterface& window)
    {
        window.set_content_size(layout.width, layout.height);
        window.set_window_size(layout.width, layout.height);
        window.set_background_root(&background);
        window.set_control_root(&controls);
        background.handle_message(gadu::ShowObject(true));
        controls.handle_message(gadu::ShowObject(true));
    }

    // The background's pixels: squares of 8 x 8 in the two colours.
    static std::vector<std::uint8_t> squares(const Layout& l)
    {
        std::vector<std::uint8_t> pixels;
        for (int y = 0; y < l.height; ++y)
        {
            for (int x = 0; x < l.width; ++x)
            {
                pixels.push_back(static_cast<std::uint8_t>((x / 8 + y / 8) % 2));
            }
        }
        return pixels;
    }

    // What the window should show at a content pixel.
    std::uint32_t expected_at(std::int32_t x, std::int32_t y) const
    {
        if (x >= layout.b_x && x < layout.b_x + layout.b_size && y >= layout.b_y && y < layout.b_y + layout.b_size)
        {
            return kColourB;
        }
        if (x >= layout.a_x && x < layout.a_x + layout.a_size && y >= layout.a_y && y < layout.a_y + layout.a_size)
        {
            return kColourA;
        }
        return (x / 8 + y / 8) % 2 != 0 ? kLight : kDark;
    }

    // How many pixels of a window's picture at the zoom differ from what the
    // scene should show there; shown(x, y) answers 0xRRGGBB at a platform pixel.
    template <typename Shown>
    std::int32_t count_wrong(Shown shown, std::int32_t zoom = 1) const
    {
        std::int32_t wrong = 0;
        for (std::int32_t y = 0; y < zoom * layout.height; ++y)
        {
            for (std::int32_t x = 0; x < zoom * layout.width; ++x)
            {
                wrong += shown(x, y) != expected_at(x / zoom, y / zoom);
            }
        }
        return wrong;
    }

    Layout layout;
    HeldPicture picture;
    gadu::BackgroundItem background;
    Log log;
    gadu::CtrlGroupItem controls;
    ProbeControl a{"a", log, gadu::Rect{0, 0, layout.a_size, layout.a_size}, kColourA};
    ProbeControl b{"b", log, gadu::Rect{0, 0, layout.b_size, layout.b_size}, kColourB};
};

}  // namespace gadu_test
