#include "EditorParent.h"

#include "HostDisplayPosix.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>

#include <cstdint>

namespace vsthost
{

namespace
{

Window as_window(void* handle)
{
    return static_cast<Window>(reinterpret_cast<std::uintptr_t>(handle));
}

Atom delete_atom(Display* display)
{
    return XInternAtom(display, "WM_DELETE_WINDOW", False);
}

}  // namespace

// A top-level window on the X display, as Linux hosts give their plug-ins:
// the plug-in gets its id and opens its own child inside it.
EditorParent::EditorParent()
{
    Display* display = HostDisplayPosix::use();
    if (display == nullptr)
    {
        return;
    }
    const int screen = DefaultScreen(display);
    const Window window = XCreateSimpleWindow(display, RootWindow(display, screen), 0, 0, 640, 480, 0,
                                              BlackPixel(display, screen), BlackPixel(display, screen));
    XStoreName(display, window, "vsthost editor");
    Atom protocols = delete_atom(display);
    XSetWMProtocols(display, window, &protocols, 1);
    XSelectInput(display, window, StructureNotifyMask);
    XMapWindow(display, window);
    // Editors want a window on screen: grabs and captures need one.
    XEvent event;
    do
    {
        XWindowEvent(display, window, StructureNotifyMask, &event);
    } while (event.type != MapNotify);
    _window = reinterpret_cast<void*>(static_cast<std::uintptr_t>(window));
}

EditorParent::~EditorParent()
{
    if (_window != nullptr)
    {
        Display* display = HostDisplayPosix::use();
        XDestroyWindow(display, as_window(_window));
        XSync(display, False);
    }
}

void EditorParent::set_size(int width, int height)
{
    Display* display = HostDisplayPosix::use();
    XSizeHints hints{};
    hints.flags = PMinSize | PMaxSize;
    hints.min_width = hints.max_width = width;
    hints.min_height = hints.max_height = height;
    XSetWMNormalHints(display, as_window(_window), &hints);
    XResizeWindow(display, as_window(_window), static_cast<unsigned>(width), static_cast<unsigned>(height));
    XFlush(display);
}

void EditorParent::invalidate_all()
{
    Display* display = HostDisplayPosix::use();
    Window root = 0;
    Window up = 0;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, as_window(_window), &root, &up, &children, &count) != 0)
    {
        for (unsigned i = 0; i < count; ++i)
        {
            XClearArea(display, children[i], 0, 0, 0, 0, True);
        }
        XFree(children);
    }
    // Once the server has answered, it has sent the editor its exposures.
    XSync(display, False);
}

void EditorParent::paint_now()
{
}

void EditorParent::pump()
{
    Display* display = HostDisplayPosix::use();
    while (XPending(display) > 0)
    {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == ClientMessage && static_cast<Atom>(event.xclient.data.l[0]) == delete_atom(display))
        {
            request_close();
        }
    }
}

}  // namespace vsthost
