#include "gadu/PicDataFactory.h"

#include "gadu/AlphaPicData24.h"
#include "gadu/AlphaPicData8.h"
#include "gadu/ApicHeader.h"
#include "gadu/PicData24.h"
#include "gadu/PicData8.h"
#include "sys/Resource.h"

namespace gadu
{

namespace
{

// The class for a kind and a depth, once its pixels are located.
template <class Pic>
std::unique_ptr<PicDataInterface> make_located(ApicHeader& header)
{
    if (!header.locate(Pic::kBytesPerPixel))
    {
        return nullptr;
    }
    if constexpr (Pic::kBytesPerPixel == 4)
    {
        return std::make_unique<Pic>(header.width, header.height, header.pixels);
    }
    else
    {
        return std::make_unique<Pic>(header.width, header.height, header.pixels, header.palette);
    }
}

}  // namespace

const PicDataFactory& PicDataFactory::use_instance()
{
    static const PicDataFactory instance;
    return instance;
}

std::unique_ptr<PicDataInterface> PicDataFactory::create(const char* name) const
{
    std::size_t size = 0;
    const std::uint8_t* data = sys::get_resource("APIC", name, &size);
    return create_from_bytes(data, size);
}

std::unique_ptr<PicDataInterface> PicDataFactory::create_from_bytes(const std::uint8_t* data,
                                                                    std::size_t size) const
{
    ApicHeader header;
    if (!header.read(data, size))
    {
        return nullptr;
    }
    const bool palette = header.bits_per_pixel == 8;
    if (!palette && header.bits_per_pixel != 24)
    {
        return nullptr;
    }
    switch (header.kind)
    {
    case 0:
        return palette ? make_located<PicData8>(header) : make_located<PicData24>(header);
    case 1:
        return palette ? make_located<AlphaPicData8>(header) : make_located<AlphaPicData24>(header);
    default:
        return nullptr;
    }
}

}  // namespace gadu
