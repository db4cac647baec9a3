#include "gadu/FontFactory.h"

#include "gadu/ApicHeader.h"
#include "gadu/MulticolorFont.h"
#include "gadu/UnicolorFont.h"
#include "sys/Resource.h"

namespace gadu
{

const FontFactory& FontFactory::use_instance()
{
    static const FontFactory instance;
    return instance;
}

std::unique_ptr<FontInterface> FontFactory::create(const char* name) const
{
    std::size_t size = 0;
    const std::uint8_t* data = sys::get_resource("APIC", name, &size);
    return create_from_bytes(data, size);
}

std::unique_ptr<FontInterface> FontFactory::create_from_bytes(const std::uint8_t* data, std::size_t size) const
{
    ApicHeader header;
    if (!header.read(data, size))
    {
        return nullptr;
    }
    if (header.kind == 2 && header.bits_per_pixel == 0 && header.locate(1))
    {
        return std::make_unique<UnicolorFont>(header.width, header.height, header.pixels);
    }
    if (header.kind == 1 && header.bits_per_pixel == 8 && header.locate(2))
    {
        return std::make_unique<MulticolorFont>(header.width, header.height, header.pixels, header.palette);
    }
    return nullptr;
}

}  // namespace gadu
