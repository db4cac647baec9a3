// The cost of painting an editor-like screen through the off-screen window: a
// 512 x 384 background, four knob bodies drawn rotated about their centres and
// one switch, from synthetic pictures of the editor's sizes.

#include "gadu/BackgroundItem.h"
#include "gadu/ControlInterface.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/GraphicMessage.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "tests/gadu/ApicImage.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace
{

// An APIC resource with the artwork's white-then-black palette; pixels as the
// format stores them (an index, plus an alpha byte for kind 1).
std::vector<std::uint8_t> make_apic(std::int32_t kind, std::int32_t width, std::int32_t height,
                                    const std::vector<std::uint8_t>& pixels)
{
    return gadu_test::make_apic(kind, 8, width, height, {0xFFFFFFu, 0x000000u}, pixels);
}

// Diagonal stripes, so that every row of the background differs.
std::vector<std::uint8_t> background_pixels(std::int32_t w, std::int32_t h)
{
    std::vector<std::uint8_t> pixels;
    for (std::int32_t y = 0; y < h; ++y)
    {
        for (std::int32_t x = 0; x < w; ++x)
        {
            pixels.push_back(static_cast<std::uint8_t>(((x + y) / 12) % 2));
        }
    }
    return pixels;
}

// A black disc with a soft rim and a white pointer, as a knob body is drawn.
std::vector<std::uint8_t> knob_pixels(std::int32_t w, std::int32_t h)
{
    std::vector<std::uint8_t> pixels;
    const double cx = 0.5 * w;
    const double cy = 0.5 * h;
    const double r = 0.5 * std::min(w, h) - 1.0;
    for (std::int32_t y = 0; y < h; ++y)
    {
        for (std::int32_t x = 0; x < w; ++x)
        {
            const double dx = x + 0.5 - cx;
            const double dy = y + 0.5 - cy;
            const double edge = std::clamp(r - std::sqrt(dx * dx + dy * dy), 0.0, 1.0);
            const bool pointer = std::fabs(dx) < 2.0 && dy < 0.0;
            pixels.push_back(pointer ? 0 : 1);
            pixels.push_back(static_cast<std::uint8_t>(std::lround(edge * 255.0)));
        }
    }
    return pixels;
}

std::vector<std::uint8_t> switch_pixels(std::int32_t w, std::int32_t h)
{
    std::vector<std::uint8_t> pixels;
    for (std::int32_t y = 0; y < h; ++y)
    {
        for (std::int32_t x = 0; x < w; ++x)
        {
            pixels.push_back(x < w / 2 ? 0 : 1);
            pixels.push_back(y == 0 || y == h - 1 ? 128 : 255);
        }
    }
    return pixels;
}

// A knob: its body turned about its hot spot, which sits on the position.
class BenchKnob : public gadu::ControlInterface
{
public:
    explicit BenchKnob(const gadu::PicDataInterface* body)
    {
        _body.set_picture(body);
        const gadu::Rect bounds = body->get_bounds();
        _body.set_hot_spot(bounds.x2 / 2, bounds.y2 / 2);
        set_hit_rect(_body.get_hit_rect());
    }

    void set_angle(double angle)
    {
        _angle = angle;
        request_redraw();
    }

    std::int32_t on_redraw(const gadu::Redraw& message) override
    {
        const gadu::Rect& tile = message.get_region();
        return _body.draw_rotated(tile.x1 - get_x(), tile.y1 - get_y(), tile.x2 - tile.x1, tile.y2 - tile.y1, _angle,
                                  *message.use_buffer());
    }

private:
    gadu::Picture _body;
    double _angle = 0.5;
};

class BenchSwitch : public gadu::ControlInterface
{
public:
    explicit BenchSwitch(const gadu::PicDataInterface* state)
    {
        _state.set_picture(state);
        set_hit_rect(_state.get_hit_rect());
    }

    std::int32_t on_redraw(const gadu::Redraw& message) override
    {
        return _state.draw(message.get_region().moved(-std::int64_t{get_x()}, -std::int64_t{get_y()}),
                           *message.use_buffer());
    }

private:
    gadu::Picture _state;
};

// The editor's screen: sizes and positions of its background, knobs and switch.
struct Screen
{
    // Tiles of the content's size unless given: one tile per paint, as the
    // platform window's buffer of the window's size gives.
    explicit Screen(std::int32_t tile_width = 0, std::int32_t tile_height = 0)
    {
        const auto& factory = gadu::PicDataFactory::use_instance();
        resources.push_back(make_apic(0, 512, 384, background_pixels(512, 384)));
        const std::int32_t knob_sizes[4][2] = {{73, 69}, {35, 41}, {40, 39}, {56, 53}};
        for (const auto& size : knob_sizes)
        {
            resources.push_back(make_apic(1, size[0], size[1], knob_pixels(size[0], size[1])));
        }
        resources.push_back(make_apic(1, 31, 25, switch_pixels(31, 25)));
        for (const auto& bytes : resources)
        {
            pictures.push_back(factory.create_from_bytes(bytes.data(), bytes.size()));
        }
        background.set_picture(gadu::Picture(pictures[0].get()));
        background.set_position(0, 0);
        const std::int32_t knob_at[4][2] = {{294, 226}, {57, 150}, {64, 223}, {64, 294}};
        for (int k = 0; k < 4; ++k)
        {
            knobs.push_back(std::make_unique<BenchKnob>(pictures[1 + k].get()));
            knobs.back()->set_position(knob_at[k][0], knob_at[k][1]);
            controls.add_control(*knobs.back());
        }
        flip = std::make_unique<BenchSwitch>(pictures[5].get());
        flip->set_position(334, 74);
        controls.add_control(*flip);
        controls.set_position(0, 0);
        window.set_background_root(&background);
        window.set_control_root(&controls);
        window.set_tile_size(tile_width, tile_height);
        window.open(nullptr);
        background.handle_message(gadu::ShowObject(true));
        controls.handle_message(gadu::ShowObject(true));
    }

    std::vector<std::vector<std::uint8_t>> resources;
    std::vector<std::unique_ptr<gadu::PicDataInterface>> pictures;
    gadu::OffscreenWindow window{512, 384};
    gadu::BackgroundItem background;
    gadu::CtrlGroupItem controls;
    std::vector<std::unique_ptr<BenchKnob>> knobs;
    std::unique_ptr<BenchSwitch> flip;
};

void BM_FullRedraw(benchmark::State& state)
{
    Screen screen;
    for (auto _ : state)
    {
        screen.window.paint_all();
        benchmark::DoNotOptimize(screen.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_FullRedraw)->Unit(benchmark::kMicrosecond);

// The same through a buffer of 128 x 96: what cutting a paint into 16 tiles costs.
void BM_FullRedrawInTiles(benchmark::State& state)
{
    Screen screen(128, 96);
    for (auto _ : state)
    {
        screen.window.paint_all();
        benchmark::DoNotOptimize(screen.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_FullRedrawInTiles)->Unit(benchmark::kMicrosecond);

void BM_KnobRedrawAtNewAngle(benchmark::State& state)
{
    Screen screen;
    screen.window.paint_all();
    double angle = 0.0;
    for (auto _ : state)
    {
        angle += 0.01;
        screen.knobs[0]->set_angle(angle);
        screen.window.paint();
        benchmark::DoNotOptimize(screen.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_KnobRedrawAtNewAngle)->Unit(benchmark::kMicrosecond);

}  // namespace
