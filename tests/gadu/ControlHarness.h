#pragma once

// An off-screen window of 128 x 128 pixels with a plain background and one
// control group, a pinned clock that moves with the window's, and a listener
// that writes down what a control tells it.

#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/DefaultEventListener.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "sys/ClockPin.h"

#include "ApicImage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace gadu_test
{

struct ListenerEvent
{
    std::string what;
    double value;
    std::int32_t level;
};

class RecordingListener : public gadu::DefaultEventListener
{
public:
    bool check(std::int32_t level) override
    {
        events.push_back({"check", 0.0, level});
        return level >= refuse_below;
    }
    void begin(std::int32_t level) override { events.push_back({"begin", 0.0, level}); }
    void end(std::int32_t level) override { events.push_back({"end", 0.0, level}); }
    double value(double v, std::int32_t level) override
    {
        events.push_back({"value", v, level});
        return v;
    }
    double value_from_param(double v, std::int32_t level) override
    {
        events.push_back({"param", v, level});
        return v;
    }

    std::vector<ListenerEvent> of(const std::string& what) const
    {
        std::vector<ListenerEvent> found;
        std::copy_if(events.begin(), events.end(), std::back_inserter(found),
                     [&](const ListenerEvent& e) { return e.what == what; });
        return found;
    }

    // The kinds of the events in order, a letter each, a run of one kind as
    // one letter: "bvev" is a gesture and a tail; checks only when asked for.
    std::string outline(bool with_checks = false) const
    {
        std::string seen;
        for (const ListenerEvent& e : events)
        {
            if ((with_checks || e.what != "check") && (seen.empty() || seen.back() != e.what[0]))
            {
                seen += e.what[0];
            }
        }
        return seen;
    }

    std::vector<ListenerEvent> events;
    // check answers false below this level.
    std::int32_t refuse_below = 0;
};

constexpr std::uint32_t kBackgroundColour = 0x203040u;
constexpr std::int32_t kScreen = 128;

// A picture of one colour, opaque (kind 0) or with the given alpha (kind 1).
inline std::vector<std::uint8_t> solid_apic(std::int32_t width, std::int32_t height, std::uint32_t colour,
                                            std::int32_t alpha = -1)
{
    std::vector<std::uint8_t> pixels;
    for (std::int32_t i = 0; i < width * height; ++i)
    {
        pixels.push_back(0);
        if (alpha >= 0)
        {
            pixels.push_back(static_cast<std::uint8_t>(alpha));
        }
    }
    return make_apic(alpha >= 0 ? 1 : 0, 8, width, height, {colour}, pixels);
}

class ControlHarness : public ::testing::Test
{
protected:
    ControlHarness()
    {
        background.set_picture(gadu::Picture(load(solid_apic(kScreen, kScreen, kBackgroundColour))));
        background.set_position(0, 0);
        group.set_position(0, 0);
        window.set_background_root(&background);
        window.set_control_root(&group);
        window.set_time(now);
    }

    // A picture of the resource's bytes, both kept for the test's life.
    const gadu::PicDataInterface* load(std::vector<std::uint8_t> bytes)
    {
        return pictures.emplace_back(std::move(bytes)).pic.get();
    }

    void open()
    {
        ASSERT_EQ(window.open(nullptr), 0);
        background.handle_message(gadu::ShowObject(true));
        group.handle_message(gadu::ShowObject(true));
        window.paint_all();
    }

    // Lets time pass: the window's timer service runs every 2 ms, and the
    // clock the controls read follows.
    void wait(double seconds)
    {
        window.run_timers(seconds);
        now += seconds;
        pin.set_seconds(now);
    }

    // Moves the cursor by (dx, dy) from wherever it is now.
    void move_by(std::int32_t dx, std::int32_t dy)
    {
        const gadu::CaptureState::Point at = window.get_cursor();
        window.move(at.x + dx, at.y + dy);
    }

    std::uint32_t screen_at(std::int32_t x, std::int32_t y) const
    {
        return window.use_screen()->get_pixel(x, y) & 0xFFFFFFu;
    }

    double now = 100.0;
    sys::ClockPin pin{100.0};
    // The bytes of a picture move with the list, but never move in memory.
    std::vector<HeldPicture> pictures;
    gadu::OffscreenWindow window{kScreen, kScreen};
    gadu::BackgroundItem background;
    gadu::CtrlGroupItem group;
    RecordingListener listener;
};

}  // namespace gadu_test
