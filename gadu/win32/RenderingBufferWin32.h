#pragma once

#include "gadu/RenderingBufferInterface.h"
#include "gadu/Zoom.h"

#include <windows.h>

#include <cstdint>
#include <memory>

namespace gadu
{

// The window's off-screen buffer: a 32-bit top-down section whose pixels the
// toolkit draws into directly, copied to the window a tile at a time. Zoomed,
// a second section of the enlarged size takes each tile as blocks of pixels
// on its way to the window, so that the system never scales (and blurs) it.
class RenderingBufferWin32 : public RenderingBufferInterface
{
public:
    // Null when the system refuses the section (or the size is not positive).
    static std::unique_ptr<RenderingBufferWin32> create(HWND window, std::int32_t width, std::int32_t height,
                                                        const Zoom& zoom = Zoom());

    ~RenderingBufferWin32() override;
    RenderingBufferWin32(const RenderingBufferWin32&) = delete;
    RenderingBufferWin32& operator=(const RenderingBufferWin32&) = delete;

    std::uint8_t* pixels() override { return _drawn.pixels; }

    // To the paint's device context while one is set, else to the window's
    // own; position and size in content pixels.
    void blit(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) override;

    // Set for the duration of a paint; null afterwards.
    void set_target(HDC dc) { _target = dc; }

private:
    struct Section
    {
        HBITMAP handle = nullptr;
        std::uint8_t* pixels = nullptr;
    };

    RenderingBufferWin32(HWND window, Section drawn, Section zoomed, std::int32_t width, std::int32_t height,
                         const Zoom& zoom);

    static Section create_section(HWND window, std::int32_t width, std::int32_t height);
    void blit_to(HDC dc, std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height) const;

    HWND _window;
    // What the toolkit draws into, and (zoomed only) what goes to the window.
    Section _drawn;
    Section _zoomed;
    Zoom _zoom;
    HDC _target = nullptr;
};

}  // namespace gadu
