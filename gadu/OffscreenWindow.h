#pragma once

#include "gadu/MemoryRenderingBuffer.h"
#include "gadu/MenuRequest.h"
#include "gadu/TextInputRequest.h"
#include "gadu/WindowInterface.h"

#include <memory>
#include <string>
#include <vector>

namespace gadu
{

// A window without a display: it paints into a picture of its content in
// memory and takes its input from calls instead of a platform. Time stands
// still unless the caller moves it. It is what the toolkit's tests drive, and
// what tools use to render a screen to an image. Its input, cursor and screen
// are in platform pixels, which a zoom makes larger than the content.
class OffscreenWindow : public WindowInterface
{
public:
    // Content and window size; negative sizes count as 0. The screen has the
    // window size (zoomed).
    OffscreenWindow(std::int32_t width, std::int32_t height);

    // The parent is ignored. The screen starts black.
    std::int32_t open(void* parent) override;
    void close() override;
    // Asks for the whole window to be painted again.
    void resize() override;

    // The size of the rendering buffer, so that a paint is cut into tiles of it;
    // the content size when unset. Takes effect at the next open.
    void set_tile_size(std::int32_t width, std::int32_t height);

    void set_time(double seconds) { _now = seconds; }
    // Moves the clock on in steps of the platform timer's 2 ms, running the
    // timer service at each step.
    void run_timers(double seconds);

    // Synthetic input; button is one of mouse_button.
    void press(std::int32_t x, std::int32_t y, std::int32_t button, std::int32_t modifiers = 0);
    void release(std::int32_t x, std::int32_t y, std::int32_t button, std::int32_t modifiers = 0);
    // The second press of a double click (the first is an ordinary press and release).
    void double_click(std::int32_t x, std::int32_t y, std::int32_t button, std::int32_t modifiers = 0);
    void move(std::int32_t x, std::int32_t y);
    void wheel(std::int32_t x, std::int32_t y, float notches, std::int32_t modifiers = 0);
    // Another window takes the mouse away, as a platform may at any time.
    void take_capture_away();

    // Draws what was invalidated since the last paint and answers that region
    // (empty when there was nothing to draw).
    Rect paint();
    Rect get_dirty() const { return _dirty; }
    // Invalidates the whole content and paints it.
    void paint_all();
    const MemoryRenderingBuffer* use_screen() const { return _screen.get(); }

    bool holds_capture() const { return _holds_capture; }
    bool is_cursor_visible() const { return _cursor_visible; }
    CaptureState::Point get_cursor() const { return _cursor; }

    const std::vector<MenuRequest>& use_menu_requests() const { return _menus; }
    bool is_menu_open() const { return _menu_open; }
    const std::vector<TextInputRequest>& use_text_requests() const { return _texts; }
    bool is_text_input_open() const { return _text_open; }
    // The user ends the open text field with this text.
    void finish_text_input(const std::string& text, bool accepted);

protected:
    bool is_open() const override { return _screen != nullptr; }
    double get_time() const override { return _now; }
    void repaint(const Rect& region) override;
    bool take_capture() override;
    bool release_capture() override;
    void show_cursor(bool visible) override { _cursor_visible = visible; }
    CaptureState::Point get_cursor_pos() const override { return _cursor; }
    void set_cursor_pos(CaptureState::Point pos) override { _cursor = pos; }
    void give_focus_back() override;
    std::int32_t show_menu(const MenuRequest& request) override;
    std::int32_t stop_menu() override;
    std::int32_t start_text_input(const TextInputRequest& request) override;
    std::int32_t stop_text_input() override;

private:
    void button(std::int32_t x, std::int32_t y, std::int32_t double_click, std::int32_t modifiers);

    std::int32_t _tile_width = 0;
    std::int32_t _tile_height = 0;
    std::unique_ptr<MemoryRenderingBuffer> _screen;
    std::unique_ptr<MemoryRenderingBuffer> _buffer;
    Rect _dirty;
    double _now = 0.0;
    std::int32_t _buttons = 0;
    bool _holds_capture = false;
    bool _cursor_visible = true;
    CaptureState::Point _cursor;
    std::vector<MenuRequest> _menus;
    bool _menu_open = false;
    std::vector<TextInputRequest> _texts;
    bool _text_open = false;
};

}  // namespace gadu
