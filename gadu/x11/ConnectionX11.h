#pragma once

#include <X11/Xlib.h>

#include <cstdint>
#include <string>

namespace gadu
{

// One connection of the toolkit to the X server, owned by one editor window
// and used only by the thread that opened it. A plug-in lives in somebody
// else's process: its mistakes must not reach the host, and the host's X
// setup must not be disturbed. So protocol errors on this connection are
// counted here instead of going to the process's handler (whose default ends
// the process), errors on the host's own connections still reach the host's
// handler, and a server that goes away marks the connection broken instead of
// ending the process. Requests on a broken connection do nothing.
class ConnectionX11
{
public:
    // name: the display to open; empty means the one DISPLAY names.
    explicit ConnectionX11(const std::string& name);
    ~ConnectionX11();
    ConnectionX11(const ConnectionX11&) = delete;
    ConnectionX11& operator=(const ConnectionX11&) = delete;

    // Null when the display could not be opened.
    Display* use_display() const { return _display; }
    bool is_broken() const { return _broken; }
    bool is_usable() const { return _display != nullptr && !_broken; }

    // While one exists on a thread, this process's error handlers are ours
    // (the ones they replaced get every error that is not on one of our
    // connections). Every entry into the toolkit that talks to the server
    // holds one, since errors arrive only while Xlib reads from the server.
    class Scope
    {
    public:
        Scope();
        ~Scope();
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        bool _installed;
    };

    // Requests that may fail for reasons outside our control (a host window
    // that is not there, shared memory the server cannot reach) are made
    // between begin_probe and end_probe: their errors are expected, and
    // end_probe answers whether there was one (it waits for the server).
    void begin_probe();
    bool end_probe();

    // Errors that no probe expected, on this connection and on all of them
    // since the process started; a correct toolkit causes none.
    std::uint32_t get_error_count() const { return _errors; }
    static std::uint32_t get_unexpected_error_count();

private:
    static int on_error(Display* display, XErrorEvent* event);
    static int on_io_error(Display* display);
    static void on_server_gone(Display* display, void* self);
    void record(const XErrorEvent& event);

    Display* _display = nullptr;
    bool _broken = false;
    bool _probing = false;
    std::uint32_t _probe_errors = 0;
    std::uint32_t _errors = 0;
};

}  // namespace gadu
