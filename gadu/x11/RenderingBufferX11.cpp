#include "gadu/x11/RenderingBufferX11.h"

#include "gadu/x11/ConnectionX11.h"

#include <X11/Xutil.h>
#include <sys/ipc.h>
#include <sys/shm.h>

#include <algorithm>
#include <cstdlib>

namespace gadu
{

namespace
{

// The toolkit's pixels are blue, green, red, unused in memory: a 32-bit
// little-endian word with red in the third byte.
bool is_toolkit_format(const XImage& image)
{
    return image.bits_per_pixel == 32 && image.byte_order == LSBFirst && image.red_mask == 0xFF0000u
        && image.green_mask == 0x00FF00u && image.blue_mask == 0x0000FFu;
}

}  // namespace

std::unique_ptr<RenderingBufferX11> RenderingBufferX11::create(ConnectionX11& connection, Window window,
                                                               Visual* visual, int depth, std::int32_t width,
                                                               std::int32_t height, const Zoom& zoom)
{
    if (width <= 0 || height <= 0 || !connection.is_usable())
    {
        return nullptr;
    }
    std::unique_ptr<RenderingBufferX11> buffer(new RenderingBufferX11(connection, window, width, height, zoom));
    if (!buffer->attach_shared(visual, depth) && !buffer->create_plain(visual, depth))
    {
        return nullptr;
    }
    buffer->_gc = XCreateGC(connection.use_display(), window, 0, nullptr);
    return buffer;
}

RenderingBufferX11::RenderingBufferX11(ConnectionX11& connection, Window window, std::int32_t width,
                                       std::int32_t height, const Zoom& zoom)
    : RenderingBufferInterface(width, height),
      _connection(connection),
      _window(window),
      _zoom(zoom),
      _pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4u, 0)
{
}

RenderingBufferX11::~RenderingBufferX11()
{
    // Also on a broken connection: the GC's memory on our side must go.
    if (_gc != nullptr)
    {
        XFreeGC(_connection.use_display(), _gc);
    }
    release_image();
}

bool RenderingBufferX11::attach_shared(Visual* visual, int depth)
{
    Display* display = _connection.use_display();
    if (XShmQueryExtension(display) == False || ImageByteOrder(display) != LSBFirst)
    {
        return false;
    }
    _image = XShmCreateImage(display, visual, static_cast<unsigned>(depth), ZPixmap, nullptr, &_segment,
                             static_cast<unsigned>(_zoom.to_platform(_width)),
                             static_cast<unsigned>(_zoom.to_platform(_height)));
    if (_image == nullptr)
    {
        return false;
    }
    _segment.shmid = -1;
    if (!is_toolkit_format(*_image))
    {
        release_image();
        return false;
    }
    _segment.shmid = shmget(IPC_PRIVATE, static_cast<std::size_t>(_image->bytes_per_line) * _image->height,
                            IPC_CREAT | 0600);
    if (_segment.shmid < 0)
    {
        release_image();
        return false;
    }
    _segment.shmaddr = static_cast<char*>(shmat(_segment.shmid, nullptr, 0));
    if (_segment.shmaddr == reinterpret_cast<char*>(-1))
    {
        _segment.shmaddr = nullptr;
        release_image();
        return false;
    }
    _image->data = _segment.shmaddr;
    _segment.readOnly = False;
    // A server on another machine, or one that may not read our memory,
    // refuses the segment with an error.
    _connection.begin_probe();
    const bool attached = XShmAttach(display, &_segment) != False;
    const bool accepted = _connection.end_probe() && attached;
    if (!accepted)
    {
        release_image();
        return false;
    }
    _shared = true;
    // Marked for removal now: the segment goes as soon as both sides let go,
    // even if this process or the server ends without saying so.
    shmctl(_segment.shmid, IPC_RMID, nullptr);
    return true;
}

bool RenderingBufferX11::create_plain(Visual* visual, int depth)
{
    const std::int32_t w = _zoom.to_platform(_width);
    const std::int32_t h = _zoom.to_platform(_height);
    // XDestroyImage frees the data with free().
    auto* data = static_cast<char*>(std::calloc(static_cast<std::size_t>(w) * static_cast<std::size_t>(h), 4u));
    if (data == nullptr)
    {
        return false;
    }
    _image = XCreateImage(_connection.use_display(), visual, static_cast<unsigned>(depth), ZPixmap, 0, data,
                          static_cast<unsigned>(w), static_cast<unsigned>(h), 32, w * 4);
    if (_image == nullptr)
    {
        std::free(data);
        return false;
    }
    // Our memory's order; Xlib turns it into the server's when it sends.
    _image->byte_order = LSBFirst;
    if (!is_toolkit_format(*_image))
    {
        release_image();
        return false;
    }
    return true;
}

void RenderingBufferX11::release_image()
{
    if (_image == nullptr)
    {
        return;
    }
    if (_shared && _connection.is_usable())
    {
        XShmDetach(_connection.use_display(), &_segment);
        XSync(_connection.use_display(), False);
    }
    if (_segment.shmaddr != nullptr)
    {
        shmdt(_segment.shmaddr);
        _image->data = nullptr;
    }
    if (_segment.shmid >= 0 && !_shared)
    {
        shmctl(_segment.shmid, IPC_RMID, nullptr);
    }
    XDestroyImage(_image);
    _image = nullptr;
    _shared = false;
    _segment = XShmSegmentInfo{};
}

void RenderingBufferX11::wait_for_server()
{
    if (_put_pending && _connection.is_usable())
    {
        XSync(_connection.use_display(), False);
    }
    _put_pending = false;
}

void RenderingBufferX11::blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height)
{
    width = std::min(width, _width);
    height = std::min(height, _height);
    if (width <= 0 || height <= 0 || !_connection.is_usable())
    {
        return;
    }
    wait_for_server();
    _zoom.expand(_pixels.data(), _width * 4, width, height, reinterpret_cast<std::uint8_t*>(_image->data),
                 _image->bytes_per_line);
    Display* display = _connection.use_display();
    const auto w = static_cast<unsigned>(_zoom.to_platform(width));
    const auto h = static_cast<unsigned>(_zoom.to_platform(height));
    if (_shared)
    {
        XShmPutImage(display, _window, _gc, _image, 0, 0, _zoom.to_platform(x), _zoom.to_platform(y), w, h, False);
        _put_pending = true;
    }
    else
    {
        XPutImage(display, _window, _gc, _image, 0, 0, _zoom.to_platform(x), _zoom.to_platform(y), w, h);
    }
}

}  // namespace gadu
