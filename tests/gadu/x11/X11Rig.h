#pragma once

// What the X11 tests share: a virtual server of their own, a connection of
// the test's as the host's (with an error handler that counts), a host
// window on it, real input through the server's test extension, and a way to
// let the editor's idle calls run until something has happened.

// GoogleTest first: Xlib defines names such as None as macros.
#include <gtest/gtest.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace gadu_test
{

// A virtual X server of the test's own, so that X11 tests need no display
// from the machine, never share one with tests running beside them, and may
// end their server on purpose. The server picks a free display number itself
// and tells it through a pipe.
class VirtualDisplay
{
public:
    VirtualDisplay() : VirtualDisplay(1280, 1024) {}

    // Width x height at 24-bit colour.
    VirtualDisplay(int width, int height)
    {
        int fds[2];
        if (pipe(fds) != 0)
        {
            return;
        }
        const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
        const std::string fd = std::to_string(fds[1]);
        _pid = fork();
        if (_pid == 0)
        {
            close(fds[0]);
            const int null = open("/dev/null", O_WRONLY);
            dup2(null, STDERR_FILENO);
            dup2(null, STDOUT_FILENO);
            execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", screen.c_str(), "-nolisten", "tcp",
                   "-noreset", static_cast<char*>(nullptr));
            _exit(127);
        }
        close(fds[1]);
        // The server writes its display number and a line end once it listens.
        std::FILE* number_pipe = fdopen(fds[0], "r");
        int number = -1;
        if (std::fscanf(number_pipe, "%d", &number) == 1)
        {
            _name = ":" + std::to_string(number);
        }
        std::fclose(number_pipe);
    }

    ~VirtualDisplay() { end(); }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    // ":N", or empty when the server did not start.
    const std::string& get_name() const { return _name; }

    // Ends the server now, as a crash or a logout would.
    void end()
    {
        if (_pid > 0)
        {
            kill(_pid, SIGTERM);
            waitpid(_pid, nullptr, 0);
            _pid = -1;
        }
    }

private:
    pid_t _pid = -1;
    std::string _name;
};

class HostX11
{
public:
    // The host window's own background: a colour no test scene uses.
    static constexpr unsigned long kHostColour = 0x3366CC;

    explicit HostX11(const std::string& display_name)
    {
        display = XOpenDisplay(display_name.c_str());
        if (display != nullptr)
        {
            XSetErrorHandler(&HostX11::count_error);
        }
    }
    ~HostX11()
    {
        if (display != nullptr)
        {
            XCloseDisplay(display);
        }
    }
    HostX11(const HostX11&) = delete;
    HostX11& operator=(const HostX11&) = delete;

    // A mapped top-level window at the screen's top-left corner, so that its
    // pixels are the screen's.
    Window make_window(int width, int height) const
    {
        const int screen = DefaultScreen(display);
        const Window w = XCreateSimpleWindow(display, RootWindow(display, screen), 0, 0,
                                             static_cast<unsigned>(width), static_cast<unsigned>(height), 0, 0,
                                             kHostColour);
        XSelectInput(display, w, StructureNotifyMask);
        XMapWindow(display, w);
        XEvent event;
        do
        {
            XWindowEvent(display, w, StructureNotifyMask, &event);
        } while (event.type != MapNotify);
        return w;
    }

    // The windows directly inside w.
    std::vector<Window> children_of(Window w) const
    {
        Window root = 0;
        Window up = 0;
        Window* children = nullptr;
        unsigned count = 0;
        std::vector<Window> found;
        if (XQueryTree(display, w, &root, &up, &children, &count) != 0)
        {
            found.assign(children, children + count);
            XFree(children);
        }
        return found;
    }

    // The window's pixels as 0xRRGGBB, rows top down.
    std::vector<std::uint32_t> capture(Window w, int width, int height) const
    {
        XSync(display, False);
        std::vector<std::uint32_t> pixels;
        XImage* image = XGetImage(display, w, 0, 0, static_cast<unsigned>(width), static_cast<unsigned>(height),
                                  AllPlanes, ZPixmap);
        if (image == nullptr)
        {
            return pixels;
        }
        for (int y = 0; y < height; ++y)
        {
            for (int x = 0; x < width; ++x)
            {
                pixels.push_back(static_cast<std::uint32_t>(XGetPixel(image, x, y) & 0xFFFFFFu));
            }
        }
        XDestroyImage(image);
        return pixels;
    }

    // Real input, as a user's hand makes it; positions on the screen.
    void move(int x, int y) const
    {
        XTestFakeMotionEvent(display, DefaultScreen(display), x, y, CurrentTime);
        XSync(display, False);
    }
    // Motion of the hand from wherever the pointer is (an editor may have
    // put it elsewhere while it drags), below the server's acceleration
    // threshold when each step is a few pixels.
    void move_by(int dx, int dy) const
    {
        XTestFakeRelativeMotionEvent(display, dx, dy, CurrentTime);
        XSync(display, False);
    }
    void button(unsigned button, bool press) const
    {
        XTestFakeButtonEvent(display, button, press ? True : False, CurrentTime);
        XSync(display, False);
    }
    void click(unsigned button, int times = 1) const
    {
        for (int i = 0; i < times; ++i)
        {
            this->button(button, true);
            this->button(button, false);
        }
    }
    void key(KeySym symbol, bool press) const
    {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, symbol), press ? True : False, CurrentTime);
        XSync(display, False);
    }
    void tap(KeySym symbol) const
    {
        key(symbol, true);
        key(symbol, false);
    }
    void pointer(int& x, int& y) const
    {
        Window root = 0;
        Window child = 0;
        int wx = 0;
        int wy = 0;
        unsigned state = 0;
        XQueryPointer(display, DefaultRootWindow(display), &root, &child, &x, &y, &wx, &wy, &state);
    }

    static inline int errors = 0;
    Display* display = nullptr;

private:
    static int count_error(Display*, XErrorEvent* event)
    {
        ++errors;
        ADD_FAILURE() << "X error " << static_cast<int>(event->error_code) << " of request "
                      << static_cast<int>(event->request_code) << "." << static_cast<int>(event->minor_code);
        return 0;
    }
};

// Calls idle (the host's idle call) every 2 ms until done answers true, at
// most for about a second; answers done's last word.
inline bool idle_until(const std::function<void()>& idle, const std::function<bool()>& done)
{
    for (int i = 0; i < 500; ++i)
    {
        idle();
        if (done())
        {
            return true;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return false;
}

}  // namespace gadu_test
