#pragma once

#include "gadu/FontInterface.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace gadu
{

// Builds fonts from APIC resources: kind 2 with 0 bits per pixel gives a
// UnicolorFont, kind 1 with 8 bits a MulticolorFont. Anything else, or
// anything that does not lie wholly inside its bytes, gives nothing.
class FontFactory
{
public:
    static const FontFactory& use_instance();

    // The resource of type "APIC" under name (any case) in this module.
    std::unique_ptr<FontInterface> create(const char* name) const;
    // From bytes in memory, which must outlive the font.
    std::unique_ptr<FontInterface> create_from_bytes(const std::uint8_t* data, std::size_t size) const;
};

}  // namespace gadu
