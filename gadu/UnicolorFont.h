#pragma once

#include "gadu/FontInterface.h"

namespace gadu
{

// A font of one coverage byte per pixel (0 nothing, 255 full colour), drawn in
// the colour the caller gives.
class UnicolorFont : public FontInterface
{
public:
    UnicolorFont(std::int32_t width, std::int32_t height, const std::uint8_t* pixels)
        : FontInterface(width, height, pixels, 1)
    {
    }

    void draw_glyph_area(const Rect& source, std::int32_t x, std::int32_t y, RenderingBufferInterface& buffer,
                         std::uint32_t colour) const override;
};

}  // namespace gadu
