#include "gadu/x11/WindowX11.h"

#include "gadu/MenuRequest.h"
#include "gadu/RectOps.h"
#include "gadu/x11/ConnectionX11.h"
#include "sys/Clock.h"
#include "sys/FpuModeGuard.h"

#include <X11/Xutil.h>

#include <cstdint>

namespace gadu
{

namespace
{

constexpr long kEvents = ExposureMask | ButtonPressMask | ButtonReleaseMask | PointerMotionMask | EnterWindowMask
                       | LeaveWindowMask | StructureNotifyMask;
constexpr unsigned kGrabEvents = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
// What a fixed window shows around a smaller content: a plain light grey, the
// colour dialog faces commonly have.
constexpr unsigned long kOutsideColour = 0xF0F0F0;

std::int32_t button_bit(unsigned x_button)
{
    switch (x_button)
    {
    case Button1:
        return mouse_button::left;
    case Button2:
        return mouse_button::middle;
    case Button3:
        return mouse_button::right;
    default:
        return 0;
    }
}

// The buttons held before the event, from its state.
std::int32_t held_buttons(unsigned state)
{
    return ((state & Button1Mask) != 0 ? mouse_button::left : 0)
         | ((state & Button3Mask) != 0 ? mouse_button::right : 0)
         | ((state & Button2Mask) != 0 ? mouse_button::middle : 0);
}

std::int32_t modifiers(unsigned state)
{
    return ((state & ControlMask) != 0 ? modifier_key::ctrl : 0) | ((state & ShiftMask) != 0 ? modifier_key::shift : 0);
}

// The wheel comes as presses of buttons 4 (away from the user) and 5.
constexpr unsigned kWheelUp = 4;
constexpr unsigned kWheelDown = 5;

}  // namespace

WindowX11::WindowX11() = default;

WindowX11::~WindowX11()
{
    close();
}

Display* WindowX11::use_display() const
{
    return _connection != nullptr ? _connection->use_display() : nullptr;
}

std::uint32_t WindowX11::get_error_count() const
{
    return _connection != nullptr ? _connection->get_error_count() : 0;
}

std::int32_t WindowX11::open(void* parent)
{
    close();
    _error.clear();
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    const ConnectionX11::Scope scope;
    _connection = std::make_unique<ConnectionX11>(_display_name);
    if (_connection->use_display() == nullptr)
    {
        _error = "gadu::WindowX11::open() : Cannot open the display.";
        _connection.reset();
        return -1;
    }
    if (!create_window(static_cast<Window>(reinterpret_cast<std::uintptr_t>(parent))))
    {
        free_window();
        return -1;
    }
    set_deferred_warps(true);
    _menu.set_window(_connection.get(), _handle);
    XMapWindow(_connection->use_display(), _handle);
    XFlush(_connection->use_display());
    return 0;
}

bool WindowX11::create_window(Window parent)
{
    Display* display = _connection->use_display();
    XWindowAttributes host{};
    _connection->begin_probe();
    const Status found = parent != 0 ? XGetWindowAttributes(display, parent, &host) : 0;
    if (!_connection->end_probe() || found == 0)
    {
        _error = "gadu::WindowX11::open() : The host's window does not exist.";
        return false;
    }
    // The toolkit draws 24-bit colour; a host window of another visual (an
    // 8-bit screen, a 32-bit window with alpha) gets a child of its own visual
    // and colour map.
    XVisualInfo visual{};
    if (XMatchVisualInfo(display, XScreenNumberOfScreen(host.screen), 24, TrueColor, &visual) == 0)
    {
        _error = "gadu::WindowX11::open() : The display has no 24-bit colour.";
        return false;
    }
    XSetWindowAttributes attributes{};
    // No background: the server leaves exposed areas alone until we paint
    // them, so the editor never flashes.
    attributes.background_pixmap = None;
    attributes.border_pixel = 0;
    attributes.event_mask = kEvents;
    unsigned long mask = CWBackPixmap | CWBorderPixel | CWEventMask;
    const bool own_colours = host.visual != visual.visual;
    if (own_colours)
    {
        attributes.colormap = XCreateColormap(display, parent, visual.visual, AllocNone);
        mask |= CWColormap;
    }
    _connection->begin_probe();
    const Window handle = XCreateWindow(display, parent, 0, 0, static_cast<unsigned>(get_platform_width()),
                                        static_cast<unsigned>(get_platform_height()), 0, visual.depth, InputOutput,
                                        visual.visual, mask, &attributes);
    const bool created = _connection->end_probe() && handle != 0;
    if (own_colours)
    {
        // The window keeps the map as long as it needs it.
        XFreeColormap(display, attributes.colormap);
    }
    if (!created)
    {
        _error = "gadu::WindowX11::open() : Cannot create the window.";
        return false;
    }
    _handle = handle;
    _buffer = RenderingBufferX11::create(*_connection, handle, visual.visual, visual.depth, get_content_width(),
                                         get_content_height(), use_zoom());
    if (_buffer == nullptr && get_content_width() > 0 && get_content_height() > 0)
    {
        _error = "gadu::WindowX11::open() : The display's pixels are not 32-bit colour.";
        return false;
    }
    set_buffer(_buffer.get());
    // The cursor of a hidden-cursor capture: one transparent pixel.
    const char empty = 0;
    const Pixmap bitmap = XCreateBitmapFromData(display, handle, &empty, 1, 1);
    XColor black{};
    _blank = XCreatePixmapCursor(display, bitmap, bitmap, &black, &black, 0, 0);
    XFreePixmap(display, bitmap);
    return true;
}

void WindowX11::close()
{
    if (_connection == nullptr)
    {
        return;
    }
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    const ConnectionX11::Scope scope;
    _menu.stop();
    if (_handle != 0)
    {
        lose_capture();
        on_destroyed();
    }
    free_window();
    use_timers().clear();
}

void WindowX11::free_window()
{
    Display* display = use_display();
    const bool usable = _connection != nullptr && _connection->is_usable();
    _menu.set_window(nullptr, 0);
    set_buffer(nullptr);
    _buffer.reset();
    if (usable && _blank != 0)
    {
        XFreeCursor(display, _blank);
    }
    if (usable && _handle != 0)
    {
        // Gone already when the host destroyed its window first.
        _connection->begin_probe();
        XDestroyWindow(display, _handle);
        _connection->end_probe();
    }
    _blank = 0;
    _handle = 0;
    _grabbed = false;
    _cursor_hidden = false;
    _warp_pending = false;
    _damage = Rect{};
    _connection.reset();
}

void WindowX11::resize()
{
    if (_handle == 0 || !_connection->is_usable())
    {
        return;
    }
    if (is_resizable())
    {
        XResizeWindow(use_display(), _handle, static_cast<unsigned>(get_platform_width()),
                      static_cast<unsigned>(get_platform_height()));
    }
    repaint(Rect{0, 0, get_platform_width(), get_platform_height()});
}

void WindowX11::idle()
{
    if (_handle == 0)
    {
        return;
    }
    const sys::FpuModeGuard fpu(sys::FpuModeGuard::Denormals::keep);
    const ConnectionX11::Scope scope;
    // The host's idle call cannot unwind our frames: a failing control loses
    // this round, not the host.
    try
    {
        Display* display = use_display();
        while (_handle != 0 && _connection->is_usable() && XPending(display) > 0)
        {
            XEvent event;
            XNextEvent(display, &event);
            dispatch(event);
        }
        if (_handle == 0 || !_connection->is_usable())
        {
            return;
        }
        on_timer_tick();
        paint();
        XFlush(display);
    }
    catch (...)
    {
    }
}

std::int32_t WindowX11::handle_message(const MessageInterface& message)
{
    const ConnectionX11::Scope scope;
    return WindowInterface::handle_message(message);
}

void WindowX11::dispatch(const XEvent& event)
{
    if (_menu.handle_event(event))
    {
        return;
    }
    if (event.xany.window != _handle)
    {
        return;
    }
    switch (event.type)
    {
    case MotionNotify:
        note_pointer(event.xmotion.serial, event.xmotion.x, event.xmotion.y);
        on_mouse_move(event.xmotion.x, event.xmotion.y);
        break;
    case ButtonPress:
    case ButtonRelease:
        on_button(event.xbutton, event.type == ButtonPress);
        break;
    case EnterNotify:
    case LeaveNotify:
        on_crossing(event.xcrossing);
        break;
    case Expose:
        _damage = united(_damage, Rect::of_size(event.xexpose.x, event.xexpose.y, event.xexpose.width,
                                                event.xexpose.height));
        break;
    case UnmapNotify:
        // An unmapped window loses its grab without a word.
        lose_capture();
        break;
    case DestroyNotify:
        on_window_gone();
        break;
    default:
        break;
    }
}

void WindowX11::note_pointer(unsigned long serial, std::int32_t x, std::int32_t y)
{
    // Events the server made after our warp count from the warp's target.
    if (_warp_pending && serial >= _warp_serial)
    {
        _warp_pending = false;
        on_warp_arrived();
    }
    _pointer = CaptureState::Point{x, y};
}

void WindowX11::on_button(const XButtonEvent& event, bool press)
{
    note_pointer(event.serial, event.x, event.y);
    if (event.button == kWheelUp || event.button == kWheelDown)
    {
        if (press)
        {
            on_mouse_wheel(event.x, event.y, event.button == kWheelUp ? 1.0f : -1.0f, modifiers(event.state));
        }
        return;
    }
    const std::int32_t bit = button_bit(event.button);
    if (bit == 0)
    {
        return;
    }
    const std::int32_t held = held_buttons(event.state);
    const std::int32_t buttons = press ? (held | bit) : (held & ~bit);
    const std::int32_t double_click = press ? _double_click.on_press(bit, event.x, event.y, event.time * 0.001) : 0;
    on_mouse_button(event.x, event.y, buttons, modifiers(event.state), double_click);
}

void WindowX11::on_crossing(const XCrossingEvent& event)
{
    if (!_grabbed)
    {
        return;
    }
    // Our grab ended without us letting go: the server says so, or the
    // pointer "left" a window that is no longer on the screen (the host hid
    // its window, and a grab ends with the window's visibility). A drag past
    // the window's edge leaves too, with the grab intact.
    bool shown = true;
    if (event.type == LeaveNotify && event.mode != NotifyUngrab)
    {
        // Gone altogether when the host destroyed its window.
        XWindowAttributes attributes{};
        _connection->begin_probe();
        const Status found = XGetWindowAttributes(use_display(), _handle, &attributes);
        shown = _connection->end_probe() && found != 0 && attributes.map_state == IsViewable;
    }
    if (event.mode == NotifyUngrab || !shown)
    {
        lose_capture();
    }
}

void WindowX11::lose_capture()
{
    if (!_grabbed)
    {
        return;
    }
    _grabbed = false;
    on_capture_changed();
}

void WindowX11::on_window_gone()
{
    // The server destroyed it with the host's window: nothing of it may be
    // asked for any more, but the client side still needs freeing.
    _connection->begin_probe();
    lose_capture();
    on_destroyed();
    _handle = 0;
    _connection->end_probe();
}

void WindowX11::paint()
{
    if (_damage.is_empty() || _buffer == nullptr)
    {
        return;
    }
    const Rect damage = _damage;
    _damage = Rect{};
    _buffer->wait_for_server();
    on_paint(damage);
    fill_outside_content();
}

// A fixed window larger than the content shows a plain face around it
// instead of whatever the host's window had there.
void WindowX11::fill_outside_content()
{
    const std::int32_t cw = use_zoom().to_platform(get_content_width());
    const std::int32_t ch = use_zoom().to_platform(get_content_height());
    const std::int32_t ww = get_platform_width();
    const std::int32_t wh = get_platform_height();
    if (ww <= cw && wh <= ch)
    {
        return;
    }
    Display* display = use_display();
    XGCValues values{};
    values.foreground = kOutsideColour;
    const GC gc = XCreateGC(display, _handle, GCForeground, &values);
    if (wh > ch)
    {
        XFillRectangle(display, _handle, gc, 0, ch, static_cast<unsigned>(ww), static_cast<unsigned>(wh - ch));
    }
    if (ww > cw)
    {
        XFillRectangle(display, _handle, gc, cw, 0, static_cast<unsigned>(ww - cw), static_cast<unsigned>(ch));
    }
    XFreeGC(display, gc);
}

double WindowX11::get_time() const
{
    return sys::get_clock_s();
}

void WindowX11::repaint(const Rect& region)
{
    // Painted at the end of the idle call that asked for it, together with
    // whatever the server reported exposed.
    _damage = united(_damage, region);
}

bool WindowX11::take_capture()
{
    if (!_connection->is_usable())
    {
        return false;
    }
    // A press already holds the pointer for us until the last button goes
    // up; the grab keeps it until the control lets go.
    const int result = XGrabPointer(use_display(), _handle, False, kGrabEvents, GrabModeAsync, GrabModeAsync, None,
                                    _cursor_hidden ? _blank : None, CurrentTime);
    _grabbed = result == GrabSuccess;
    return _grabbed;
}

// Letting go of the capture is a capture change like any other, reported at
// once.
bool WindowX11::release_capture()
{
    if (_grabbed && _connection->is_usable())
    {
        XUngrabPointer(use_display(), CurrentTime);
    }
    lose_capture();
    return true;
}

void WindowX11::show_cursor(bool visible)
{
    _cursor_hidden = !visible;
    if (!_connection->is_usable())
    {
        return;
    }
    const Cursor cursor = visible ? None : _blank;
    XDefineCursor(use_display(), _handle, cursor);
    if (_grabbed)
    {
        XChangeActivePointerGrab(use_display(), kGrabEvents, cursor, CurrentTime);
    }
}

void WindowX11::set_cursor_pos(CaptureState::Point pos)
{
    if (!_connection->is_usable())
    {
        return;
    }
    _warp_serial = NextRequest(use_display());
    _warp_pending = true;
    XWarpPointer(use_display(), None, _handle, 0, 0, 0, 0, pos.x, pos.y);
}

std::int32_t WindowX11::show_menu(const MenuRequest& request)
{
    const std::int32_t result = _menu.show(request);
    // The menu holds the pointer now: a control that held it has lost it, as
    // it does when the Windows menu takes the capture.
    if (result == 0)
    {
        lose_capture();
    }
    return result;
}

std::int32_t WindowX11::stop_menu()
{
    return _menu.stop();
}

std::int32_t WindowX11::start_text_input(const TextInputRequest& /*request*/)
{
    return -1;
}

std::int32_t WindowX11::stop_text_input()
{
    return -1;
}

}  // namespace gadu
