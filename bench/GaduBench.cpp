// Drawing costs of the editor's screen: the opaque background, a knob body
// turned with bilinear sampling, a whole-screen redraw and one knob redrawn at
// a new angle. Pictures of the editor's sizes are made here, so the numbers do
// not depend on the artwork's contents (the arithmetic does not either).
#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/PicDataFactory.h"
#include "gadu/Picture.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace
{

void put_u32(std::vector<std::uint8_t>& bytes, std::size_t at, std::uint32_t v)
{
    for (int i = 0; i < 4; ++i)
    {
        bytes[at + i] = static_cast<std::uint8_t>(v >> (8 * i));
    }
}

// A two-entry palette picture (white, black), with alpha when kind is 1:
// a disc with a soft edge and a pointer, like a knob body.
std::vector<std::uint8_t> make_picture(std::int32_t kind, std::int32_t width, std::int32_t height)
{
    const std::size_t bpp = kind == 1 ? 2 : 1;
    std::vector<std::uint8_t> bytes(44 + bpp * static_cast<std::size_t>(width) * height);
    const std::uint32_t header[] = {0xFFFFFFFFu, 36, static_cast<std::uint32_t>(kind), 8,
                                    static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height), 2, 44, 36};
    for (std::size_t i = 0; i < 9; ++i)
    {
        put_u32(bytes, 4 * i, header[i]);
    }
    put_u32(bytes, 36, 0x00FFFFFFu);
    put_u32(bytes, 40, 0u);
    const double cx = width / 2.0, cy = height / 2.0, r = std::min(cx, cy) - 1.0;
    for (std::int32_t y = 0; y < height; ++y)
    {
        for (std::int32_t x = 0; x < width; ++x)
        {
            std::uint8_t* px = bytes.data() + 44 + bpp * (static_cast<std::size_t>(y) * width + x);
            const double d = std::hypot(x + 0.5 - cx, y + 0.5 - cy);
            px[0] = (std::fabs(x + 0.5 - cx) < 2.0 && y < cy) || d > r - 3.0 ? 1 : 0;
            if (kind == 1)
            {
                px[1] = static_cast<std::uint8_t>(std::clamp((r - d) * 255.0, 0.0, 255.0));
            }
            else
            {
                px[0] = static_cast<std::uint8_t>((x / 16 + y / 16) % 2);
            }
        }
    }
    return bytes;
}

struct Screen
{
    struct Knob
    {
        std::int32_t x, y, width, height;
    };
    // The editor's knobs by centre and body size, and its switch.
    const std::vector<Knob> knobs = {{294, 226, 73, 69}, {57, 150, 35, 41}, {64, 223, 40, 39}, {64, 294, 56, 53}};

    Screen() : background_bytes(make_picture(0, 512, 384)), switch_bytes(make_picture(1, 31, 25)), buffer(512, 384)
    {
        background_pic = gadu::PicDataFactory::use_instance().create_from_bytes(background_bytes.data(),
                                                                                  background_bytes.size());
        background.set_picture(background_pic.get());
        switch_pic = gadu::PicDataFactory::use_instance().create_from_bytes(switch_bytes.data(), switch_bytes.size());
        flip_flop.set_picture(switch_pic.get());
        for (const Knob& k : knobs)
        {
            knob_bytes.push_back(make_picture(1, k.width, k.height));
            knob_pics.push_back(gadu::PicDataFactory::use_instance().create_from_bytes(knob_bytes.back().data(),
                                                                                         knob_bytes.back().size()));
            knob_pictures.emplace_back(knob_pics.back().get());
            knob_pictures.back().set_hot_spot(k.width / 2, k.height / 2);
        }
    }

    // One area of the screen drawn as a window tile is: background, then every
    // control over it.
    void draw(const gadu::Rect& tile, float angle)
    {
        background.draw(tile, buffer);
        for (std::size_t i = 0; i < knobs.size(); ++i)
        {
            knob_pictures[i].draw_rotated(tile.x1 - knobs[i].x, tile.y1 - knobs[i].y, tile.x2 - tile.x1,
                                          tile.y2 - tile.y1, angle + static_cast<float>(i), buffer);
        }
        flip_flop.draw(tile.moved(-334, -74), buffer);
    }

    std::vector<std::uint8_t> background_bytes;
    std::vector<std::uint8_t> switch_bytes;
    std::vector<std::vector<std::uint8_t>> knob_bytes;
    std::unique_ptr<gadu::PicDataInterface> background_pic;
    std::unique_ptr<gadu::PicDataInterface> switch_pic;
    std::vector<std::unique_ptr<gadu::PicDataInterface>> knob_pics;
    gadu::Picture background;
    gadu::Picture flip_flop;
    std::vector<gadu::Picture> knob_pictures;
    gadu::MemoryRenderingBuffer buffer;
};

void BM_FullScreenOpaqueDraw(benchmark::State& state)
{
    Screen screen;
    for (auto _ : state)
    {
        screen.background.draw(gadu::Rect{0, 0, 512, 384}, screen.buffer);
        benchmark::DoNotOptimize(screen.buffer.pixels());
    }
}
BENCHMARK(BM_FullScreenOpaqueDraw)->Unit(benchmark::kMicrosecond);

void BM_LargestKnobRotatedFaded(benchmark::State& state)
{
    // Turned about its centre, which stays at the buffer's (256, 192).
    Screen screen;
    float angle = 0.3f;
    for (auto _ : state)
    {
        screen.knob_pictures[0].draw_rotated(-256.0, -192.0, 512, 384, angle, screen.buffer, 0.8f);
        angle += 0.01f;
        benchmark::DoNotOptimize(screen.buffer.pixels());
    }
}
BENCHMARK(BM_LargestKnobRotatedFaded)->Unit(benchmark::kMicrosecond);

void BM_EditorScreenFullRedraw(benchmark::State& state)
{
    Screen screen;
    float angle = 0.3f;
    for (auto _ : state)
    {
        screen.draw(gadu::Rect{0, 0, 512, 384}, angle);
        angle += 0.01f;
        benchmark::DoNotOptimize(screen.buffer.pixels());
    }
}
BENCHMARK(BM_EditorScreenFullRedraw)->Unit(benchmark::kMicrosecond);

void BM_OneKnobRedrawnAtANewAngle(benchmark::State& state)
{
    // The largest knob's area, as its invalidation asks: the knob's body
    // rectangle around its centre, drawn as one tile from the top.
    Screen screen;
    const Screen::Knob& k = screen.knobs[0];
    const gadu::Rect area = gadu::Rect::of_size(k.x - k.width / 2, k.y - k.height / 2, k.width, k.height);
    gadu::MemoryRenderingBuffer tile(k.width, k.height);
    float angle = 0.3f;
    for (auto _ : state)
    {
        screen.background.draw(area, tile);
        screen.knob_pictures[0].draw_rotated(area.x1 - k.x, area.y1 - k.y, k.width, k.height, angle, tile);
        angle += 0.01f;
        benchmark::DoNotOptimize(tile.pixels());
    }
}
BENCHMARK(BM_OneKnobRedrawnAtANewAngle)->Unit(benchmark::kMicrosecond);

}  // namespace
