#include "gadu/x11/ConnectionX11.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace gadu
{

namespace
{

// The connections of the toolkit in this process, so that the one error
// handler of the process can tell ours from the host's. Editors of several
// instances may live on several threads.
struct Registry
{
    std::mutex lock;
    std::vector<ConnectionX11*> connections;
    // How many scopes are open on all threads; the first installs the
    // handler, the last puts back the one it replaced.
    int scopes = 0;
    XErrorHandler replaced = nullptr;
    XIOErrorHandler replaced_io = nullptr;
};

ConnectionX11* find_locked(Registry& registry, Display* display)
{
    const auto found = std::find_if(registry.connections.begin(), registry.connections.end(),
                                    [display](const ConnectionX11* c) { return c->use_display() == display; });
    return found != registry.connections.end() ? *found : nullptr;
}

Registry& use_registry()
{
    static Registry registry;
    return registry;
}

std::atomic<std::uint32_t> unexpected_errors{0};

}  // namespace

ConnectionX11::ConnectionX11(const std::string& name)
{
    _display = XOpenDisplay(name.empty() ? nullptr : name.c_str());
    if (_display == nullptr)
    {
        return;
    }
    // Without this the loss of the server ends the host's process.
    XSetIOErrorExitHandler(_display, &ConnectionX11::on_server_gone, this);
    Registry& registry = use_registry();
    std::lock_guard<std::mutex> guard(registry.lock);
    registry.connections.push_back(this);
}

ConnectionX11::~ConnectionX11()
{
    if (_display == nullptr)
    {
        return;
    }
    {
        const Scope scope;
        // Also frees what the server still holds of ours, and answers at once
        // when the server is gone.
        XCloseDisplay(_display);
    }
    Registry& registry = use_registry();
    std::lock_guard<std::mutex> guard(registry.lock);
    registry.connections.erase(std::remove(registry.connections.begin(), registry.connections.end(), this),
                               registry.connections.end());
}

ConnectionX11::Scope::Scope() : _installed(false)
{
    Registry& registry = use_registry();
    std::lock_guard<std::mutex> guard(registry.lock);
    if (registry.scopes++ == 0)
    {
        registry.replaced = XSetErrorHandler(&ConnectionX11::on_error);
        registry.replaced_io = XSetIOErrorHandler(&ConnectionX11::on_io_error);
    }
    _installed = true;
}

ConnectionX11::Scope::~Scope()
{
    Registry& registry = use_registry();
    std::lock_guard<std::mutex> guard(registry.lock);
    if (_installed && --registry.scopes == 0)
    {
        // A host that installed a handler of its own meanwhile keeps it.
        const XErrorHandler current = XSetErrorHandler(registry.replaced);
        if (current != &ConnectionX11::on_error)
        {
            XSetErrorHandler(current);
        }
        const XIOErrorHandler current_io = XSetIOErrorHandler(registry.replaced_io);
        if (current_io != &ConnectionX11::on_io_error)
        {
            XSetIOErrorHandler(current_io);
        }
        registry.replaced = nullptr;
        registry.replaced_io = nullptr;
    }
}

void ConnectionX11::begin_probe()
{
    _probing = true;
    _probe_errors = 0;
}

bool ConnectionX11::end_probe()
{
    if (is_usable())
    {
        XSync(_display, False);
    }
    _probing = false;
    return _probe_errors == 0 && is_usable();
}

std::uint32_t ConnectionX11::get_unexpected_error_count()
{
    return unexpected_errors.load();
}

int ConnectionX11::on_error(Display* display, XErrorEvent* event)
{
    XErrorHandler replaced = nullptr;
    {
        Registry& registry = use_registry();
        std::lock_guard<std::mutex> guard(registry.lock);
        if (ConnectionX11* connection = find_locked(registry, display))
        {
            connection->record(*event);
            return 0;
        }
        replaced = registry.replaced;
    }
    return replaced != nullptr ? replaced(display, event) : 0;
}

void ConnectionX11::record(const XErrorEvent& /*event*/)
{
    if (_probing)
    {
        ++_probe_errors;
        return;
    }
    ++_errors;
    ++unexpected_errors;
}

// Xlib's own handler ends the process. For our connections the exit handler
// below marks them broken instead.
int ConnectionX11::on_io_error(Display* display)
{
    XIOErrorHandler replaced = nullptr;
    {
        Registry& registry = use_registry();
        std::lock_guard<std::mutex> guard(registry.lock);
        if (find_locked(registry, display) != nullptr)
        {
            return 0;
        }
        replaced = registry.replaced_io;
    }
    return replaced != nullptr ? replaced(display) : 0;
}

void ConnectionX11::on_server_gone(Display* /*display*/, void* self)
{
    // Returning marks the display dead inside Xlib: every later call on it
    // comes back at once. The editor notices at its next idle.
    static_cast<ConnectionX11*>(self)->_broken = true;
}

}  // namespace gadu
