#pragma once

#include "gadu/PicDataInterface.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace gadu
{

// Builds pictures from APIC resources: kind 0 (opaque) or 1 (with alpha), with
// 8 bits (palette) or 24 bits per pixel. Anything else, or anything that does
// not lie wholly inside its bytes, gives nothing.
class PicDataFactory
{
public:
    static const PicDataFactory& use_instance();

    // The resource of type "APIC" under name (any case) in this module.
    std::unique_ptr<PicDataInterface> create(const char* name) const;
    // From bytes in memory, which must outlive the picture.
    std::unique_ptr<PicDataInterface> create_from_bytes(const std::uint8_t* data, std::size_t size) const;
};

}  // namespace gadu
