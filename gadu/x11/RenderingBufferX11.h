#pragma once

#include "gadu/RenderingBufferInterface.h"
#include "gadu/Zoom.h"

#include <X11/Xlib.h>
#include <X11/extensions/XShm.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace gadu
{

class ConnectionX11;

// The window's off-screen buffer on X11: the toolkit draws into memory of its
// own, and each tile goes to an image of the window's format (as blocks of
// pixels when zoomed) and from there to the window. The image lives in memory
// shared with the server where the server can reach it (a local display with
// the shared-memory extension), so a frame is not copied through the socket;
// elsewhere it is sent as an ordinary image.
class RenderingBufferX11 : public RenderingBufferInterface
{
public:
    // Null when the window's visual is not 32-bit blue, green, red pixels
    // (the toolkit's own format), or the size is not positive.
    static std::unique_ptr<RenderingBufferX11> create(ConnectionX11& connection, Window window, Visual* visual,
                                                      int depth, std::int32_t width, std::int32_t height,
                                                      const Zoom& zoom);
    ~RenderingBufferX11() override;
    RenderingBufferX11(const RenderingBufferX11&) = delete;
    RenderingBufferX11& operator=(const RenderingBufferX11&) = delete;

    std::uint8_t* pixels() override { return _pixels.data(); }
    // Position and size in content pixels.
    void blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override;

    // The server may still be reading the shared image of the last frame:
    // called before the next frame is written into it.
    void wait_for_server();
    bool is_shared() const { return _shared; }

private:
    RenderingBufferX11(ConnectionX11& connection, Window window, std::int32_t width, std::int32_t height,
                       const Zoom& zoom);

    bool attach_shared(Visual* visual, int depth);
    bool create_plain(Visual* visual, int depth);
    void release_image();

    ConnectionX11& _connection;
    Window _window;
    Zoom _zoom;
    std::vector<std::uint8_t> _pixels;
    GC _gc = nullptr;
    XImage* _image = nullptr;
    XShmSegmentInfo _segment{};
    bool _shared = false;
    bool _put_pending = false;
};

}  // namespace gadu
