#pragma once

#include "gadu/PicDataBase.h"

namespace gadu
{

// An opaque picture of blue, green, red and an unused byte per pixel.
class PicData24 : public PicDataBase<PicData24>
{
public:
    static constexpr int kBytesPerPixel = 4;
    static constexpr bool kHasAlpha = false;

    PicData24(std::int32_t width, std::int32_t height, const std::uint8_t* pixels)
        : PicDataBase(width, height, pixels, nullptr)
    {
    }

    const std::uint8_t* colour_of(const std::uint8_t* px) const { return px; }
};

}  // namespace gadu
