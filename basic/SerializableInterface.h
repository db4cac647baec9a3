#pragma once

#include <cstddef>
#include <cstdint>

namespace basic
{

// An object that stores itself as a self-contained byte record (a host's
// chunk). Records come from outside the plug-in and are not trusted.
class SerializableInterface
{
public:
    virtual ~SerializableInterface() = default;

    // Reads the record in the size bytes at data: 0, or non-zero when they do
    // not hold a complete, valid record, in which case nothing changes.
    virtual int read(const std::uint8_t* data, std::size_t size) = 0;
    // Writes get_size() bytes: 0, or non-zero (writing nothing) when capacity
    // is smaller than that.
    virtual int write(std::uint8_t* data, std::size_t capacity) const = 0;
    virtual std::size_t get_size() const = 0;
};

}  // namespace basic
