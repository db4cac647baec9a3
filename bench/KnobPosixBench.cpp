// What one knob costs the editor thread, through the off-screen window: the
// knob moved to a new value from the parameter side and painted (the area it
// asks for: the background under its turning body, then the body turned), and
// one frame of a drag (a pointer motion, the timer's smoothing, the paint).
// The knob has the size of the editor's largest one (73 x 69). The drag reads
// the mouse-compatibility setting, so the per-user key store is pointed at a
// scratch folder first: a benchmark must not write the user's settings.

#include "gadu/BackgroundItem.h"
#include "gadu/CtrlGroupItem.h"
#include "gadu/Knob.h"
#include "gadu/MouseCompatibility.h"
#include "gadu/OffscreenWindow.h"
#include "gadu/PicDataFactory.h"
#include "gadu/ShowObject.h"
#include "sys/ClockPin.h"
#include "tests/gadu/ApicImage.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

namespace
{

constexpr std::int32_t kWidth = 512;
constexpr std::int32_t kHeight = 384;

// Grey levels in a 256-entry palette: a background of soft bands, and a knob
// body whose alpha falls off over the last pixel of its radius, with a light
// notch as its pointer.
std::vector<std::uint32_t> grey_palette()
{
    std::vector<std::uint32_t> palette;
    for (std::uint32_t i = 0; i < 256; ++i)
    {
        palette.push_back(i * 0x010101u);
    }
    return palette;
}

std::vector<std::uint8_t> bands(std::int32_t w, std::int32_t h)
{
    std::vector<std::uint8_t> pixels(static_cast<std::size_t>(w) * h);
    for (std::size_t i = 0; i < pixels.size(); ++i)
    {
        pixels[i] = static_cast<std::uint8_t>(96 + 64 * std::sin(static_cast<double>(i % w + i / w) * 0.05));
    }
    return pixels;
}

std::vector<std::uint8_t> body(std::int32_t w, std::int32_t h)
{
    std::vector<std::uint8_t> pixels;
    const double radius = 0.5 * std::min(w, h);
    for (std::int32_t y = 0; y < h; ++y)
    {
        for (std::int32_t x = 0; x < w; ++x)
        {
            const double dx = x + 0.5 - 0.5 * w;
            const double dy = y + 0.5 - 0.5 * h;
            const double inside = radius - std::hypot(dx, dy);
            const bool notch = dy < -radius * 0.3 && std::fabs(dx) < 2.5;
            pixels.push_back(notch ? 230 : static_cast<std::uint8_t>(40 + 20 * (dx + dy) / radius));
            pixels.push_back(static_cast<std::uint8_t>(255.0 * std::fmin(1.0, std::fmax(0.0, inside))));
        }
    }
    return pixels;
}

struct ScratchSettings
{
    ScratchSettings()
    {
        std::filesystem::create_directories(path);
        ::setenv("XDG_CONFIG_HOME", path.c_str(), 1);
        gadu::MouseCompatibility::use_instance().set_mode(gadu::MouseCompatibility::kEndlessDrag);
    }
    ~ScratchSettings()
    {
        std::error_code ec;
        std::filesystem::remove_all(path, ec);
    }

    const std::filesystem::path path = std::filesystem::temp_directory_path() / "zq-knob-bench";
};

struct OneKnob
{
    OneKnob()
    {
        const auto& factory = gadu::PicDataFactory::use_instance();
        background_bytes = gadu_test::make_apic(0, 8, kWidth, kHeight, grey_palette(), bands(kWidth, kHeight));
        body_bytes = gadu_test::make_apic(1, 8, 73, 69, grey_palette(), body(73, 69));
        background_pic = factory.create_from_bytes(background_bytes.data(), background_bytes.size());
        body_pic = factory.create_from_bytes(body_bytes.data(), body_bytes.size());
        background.set_picture(gadu::Picture(background_pic.get()));
        background.set_position(0, 0);
        gadu::Picture turning(body_pic.get());
        turning.set_hot_spot(36, 34);
        knob.set_body_picture(turning);
        knob.set_rotate_body(true);
        knob.set_angle(0.5417f, -0.75f);
        knob.set_pixels_per_range(256);
        knob.set_fine_factor(0.03125f);
        knob.set_hit_rect(gadu::Rect{-40, -40, 40, 40});
        knob.set_position(294, 226);
        controls.add_control(knob);
        controls.set_position(0, 0);
        window.set_background_root(&background);
        window.set_control_root(&controls);
        window.set_time(1.0);
        window.open(nullptr);
        background.handle_message(gadu::ShowObject(true));
        controls.handle_message(gadu::ShowObject(true));
        window.paint_all();
    }

    ScratchSettings settings;
    sys::ClockPin pin{1.0};
    std::vector<std::uint8_t> background_bytes;
    std::vector<std::uint8_t> body_bytes;
    std::unique_ptr<gadu::PicDataInterface> background_pic;
    std::unique_ptr<gadu::PicDataInterface> body_pic;
    gadu::OffscreenWindow window{kWidth, kHeight};
    gadu::BackgroundItem background;
    gadu::CtrlGroupItem controls;
    gadu::Knob knob;
};

void BM_KnobRedrawAtNewValue(benchmark::State& state)
{
    OneKnob screen;
    double value = 0.0;
    for (auto _ : state)
    {
        value = value < 1.0 ? value + 0.003 : 0.0;
        screen.knob.set_value_from_param(value, 100);
        screen.window.paint();
        benchmark::DoNotOptimize(screen.window.use_screen()->pixels());
    }
}
BENCHMARK(BM_KnobRedrawAtNewValue)->Unit(benchmark::kMicrosecond);

// A drag up and down the whole range, one pixel every 4 ms of the pinned clock.
void BM_KnobDragFrame(benchmark::State& state)
{
    OneKnob screen;
    screen.window.press(294, 226, gadu::mouse_button::left);
    double now = 1.0;
    std::int32_t step = -1;
    std::int32_t travelled = 0;
    for (auto _ : state)
    {
        if (++travelled == 256)
        {
            travelled = 0;
            step = -step;
        }
        now += 0.004;
        screen.window.run_timers(0.004);
        screen.pin.set_seconds(now);
        const gadu::CaptureState::Point at = screen.window.get_cursor();
        screen.window.move(at.x, at.y + step);
        screen.window.paint();
        benchmark::DoNotOptimize(screen.window.use_screen()->pixels());
    }
    screen.window.release(294, 226, gadu::mouse_button::left);
}
BENCHMARK(BM_KnobDragFrame)->Unit(benchmark::kMicrosecond);

}  // namespace
