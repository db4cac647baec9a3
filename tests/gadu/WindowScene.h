#pragma once

// The scene every window test of the toolkit builds, whatever the platform:
// a background of 8 x 8 squares in two colours and two probe controls over
// it, a and b, so that a test reads from the log what reached which control
// and from the pixels what the window shows.

#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "gadu/WindowInterface.h"

#include "tests/gadu/ApicImage.h"
#include "tests/gadu/ProbeControl.h"

#include <memory>
#include <vector>

namespace gadu_test
{

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
