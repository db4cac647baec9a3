#include "gadu/OffscreenWindow.h"

#include "gadu/KeyboardMessage.h"
#include "gadu/MessageHandlerInterface.h"
#include "gadu/RectOps.h"

#include <cmath>

namespace gadu
{

namespace
{

// The period of the platform timer that drives the timer service.
constexpr double kTickSeconds = 0.002;

}  // namespace

OffscreenWindow::OffscreenWindow(std::int32_t width, std::int32_t height)
{
    set_content_size(width, height);
    set_window_size(width, height);
}

std::int32_t OffscreenWindow::open(void* /*parent*/)
{
    const std::int32_t w = get_window_width();
    const std::int32_t h = get_window_height();
    _screen = std::make_unique<MemoryRenderingBuffer>(use_zoom().to_platform(w), use_zoom().to_platform(h));
    _buffer = std::make_unique<MemoryRenderingBuffer>(_tile_width > 0 ? _tile_width : w,
                                                      _tile_height > 0 ? _tile_height : h, _screen.get(),
                                                      use_zoom());
    set_buffer(_buffer.get());
    _dirty = Rect{};
    return 0;
}

void OffscreenWindow::close()
{
    if (_holds_capture)
    {
        take_capture_away();
    }
    use_timers().clear();
    on_destroyed();
    set_buffer(nullptr);
    _buffer.reset();
    _screen.reset();
}

void OffscreenWindow::resize()
{
    repaint(use_zoom().to_platform(Rect{0, 0, get_window_width(), get_window_height()}));
}

void OffscreenWindow::set_tile_size(std::int32_t width, std::int32_t height)
{
    _tile_width = width;
    _tile_height = height;
}

void OffscreenWindow::run_timers(double seconds)
{
    const double start = _now;
    const auto ticks = static_cast<std::int64_t>(std::floor(seconds / kTickSeconds + 1e-9));
    for (std::int64_t i = 1; i <= ticks && is_open(); ++i)
    {
        _now = start + static_cast<double>(i) * kTickSeconds;
        on_timer_tick();
    }
    _now = start + seconds;
}

void OffscreenWindow::press(std::int32_t x, std::int32_t y, std::int32_t button_bit, std::int32_t modifiers)
{
    _buttons |= button_bit;
    button(x, y, 0, modifiers);
}

void OffscreenWindow::release(std::int32_t x, std::int32_t y, std::int32_t button_bit, std::int32_t modifiers)
{
    _buttons &= ~button_bit;
    button(x, y, 0, modifiers);
}

void OffscreenWindow::double_click(std::int32_t x, std::int32_t y, std::int32_t button_bit,
                                   std::int32_t modifiers)
{
    _buttons |= button_bit;
    button(x, y, button_bit, modifiers);
}

void OffscreenWindow::button(std::int32_t x, std::int32_t y, std::int32_t double_click, std::int32_t modifiers)
{
    if (is_open())
    {
        _cursor = CaptureState::Point{x, y};
        on_mouse_button(x, y, _buttons, modifiers, double_click);
    }
}

void OffscreenWindow::move(std::int32_t x, std::int32_t y)
{
    if (is_open())
    {
        _cursor = CaptureState::Point{x, y};
        on_mouse_move(x, y);
    }
}

void OffscreenWindow::wheel(std::int32_t x, std::int32_t y, float notches, std::int32_t modifiers)
{
    if (is_open())
    {
        on_mouse_wheel(x, y, notches, modifiers);
    }
}

void OffscreenWindow::take_capture_away()
{
    if (_holds_capture)
    {
        _holds_capture = false;
        on_capture_changed();
    }
}

Rect OffscreenWindow::paint()
{
    const Rect painted = _dirty;
    _dirty = Rect{};
    if (is_open() && !painted.is_empty())
    {
        on_paint(painted);
    }
    return painted;
}

void OffscreenWindow::paint_all()
{
    resize();
    paint();
}

void OffscreenWindow::finish_text_input(const std::string& text, bool accepted)
{
    if (!_text_open)
    {
        return;
    }
    _text_open = false;
    MessageHandlerInterface* requester = _texts.back().use_requester();
    if (requester != nullptr)
    {
        requester->handle_message(TextInputFinished(text, accepted));
    }
}

void OffscreenWindow::repaint(const Rect& region)
{
    _dirty = united(_dirty, region);
}

bool OffscreenWindow::take_capture()
{
    _holds_capture = true;
    return true;
}

// Letting go of the capture is a capture change like any other, and the
// platform reports it at once, inside the release.
bool OffscreenWindow::release_capture()
{
    take_capture_away();
    return true;
}

// Losing the focus accepts what the field holds.
void OffscreenWindow::give_focus_back()
{
    if (_text_open)
    {
        finish_text_input(_texts.back().get_text(), true);
    }
}

std::int32_t OffscreenWindow::show_menu(const MenuRequest& request)
{
    _menus.push_back(request);
    _menu_open = true;
    return 0;
}

std::int32_t OffscreenWindow::stop_menu()
{
    if (!_menu_open)
    {
        return kRefused;
    }
    _menu_open = false;
    return 0;
}

std::int32_t OffscreenWindow::start_text_input(const TextInputRequest& request)
{
    _texts.push_back(request);
    _text_open = true;
    return 0;
}

// Closing the field from the program cancels it.
std::int32_t OffscreenWindow::stop_text_input()
{
    if (!_text_open)
    {
        return kRefused;
    }
    finish_text_input(_texts.back().get_text(), false);
    return 0;
}

}  // namespace gadu
