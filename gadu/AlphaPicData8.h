#pragma once

#include "gadu/AlphaPicDataBase.h"

namespace gadu
{

// A picture of a palette index and an alpha byte per pixel (0 transparent,
// 255 opaque). A partly covering pixel moves the buffer from d towards the
// colour by a/256 of the distance.
class AlphaPicData8 : public AlphaPicDataBase<AlphaPicData8>
{
public:
    static constexpr int kBytesPerPixel = 2;
    static constexpr bool kHasAlpha = true;

    AlphaPicData8(std::int32_t width, std::int32_t height, const std::uint8_t* pixels, const std::uint8_t* palette)
        : AlphaPicDataBase(width, height, pixels, palette)
    {
    }

    const std::uint8_t* colour_of(const std::uint8_t* px) const { return _palette + 4 * px[0]; }
    static int alpha_of(const std::uint8_t* px) { return px[1]; }
    static std::uint8_t blend(int s, int d, int a) { return static_cast<std::uint8_t>(d + (((s - d) * a) >> 8)); }
};

}  // namespace gadu
