#pragma once

#include "gadu/AlphaPicDataBase.h"

namespace gadu
{

// A picture of blue, green, red and alpha per pixel (0 transparent, 255
// opaque). A partly covering pixel mixes colour and buffer with the weights a
// and 255 - a, divided by 256.
class AlphaPicData24 : public AlphaPicDataBase<AlphaPicData24>
{
public:
    static constexpr int kBytesPerPixel = 4;
    static constexpr bool kHasAlpha = true;

    AlphaPicData24(std::int32_t width, std::int32_t height, const std::uint8_t* pixels)
        : AlphaPicDataBase(width, height, pixels, nullptr)
    {
    }

    const std::uint8_t* colour_of(const std::uint8_t* px) const { return px; }
    static int alpha_of(const std::uint8_t* px) { return px[3]; }
    static std::uint8_t blend(int s, int d, int a) { return static_cast<std::uint8_t>((s * a + d * (255 - a)) >> 8); }
};

}  // namespace gadu
