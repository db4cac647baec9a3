#pragma once

#include "gadu/PicDataBase.h"

namespace gadu
{

// An opaque picture of one palette index per pixel.
class PicData8 : public PicDataBase<PicData8>
{
public:
    static constexpr int kBytesPerPixel = 1;
    static constexpr bool kHasAlpha = false;

    PicData8(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, const std::uint8_t* palette)
        : PicDataBase(width, height, pixels, palette)
    {
    }

    const std::uint8_t* colour_of(const std::uint8_t* px) const { return _palette + 4 * px[0]; }
};

}  // namespace gadu
