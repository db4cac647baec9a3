#pragma once

#include "basic/SerializableInterface.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace zq_test
{

inline std::vector<std::uint8_t> write_record(const basic::SerializableInterface& object)
{
    std::vector<std::uint8_t> bytes(object.get_size());
    if (object.write(bytes.data(), bytes.size()) != 0)
    {
        std::abort();
    }
    return bytes;
}

// Reads untrusted bytes into object and aborts when the reader breaks its
// promises: a refused record must leave the object as it was; an accepted one
// must pass check(object) and write a record that reads back to the same record.
template <class T, class Check>
void check_record_read(T& object, const std::uint8_t* data, std::size_t size, Check check)
{
    const std::vector<std::uint8_t> before = write_record(object);
    if (object.read(data, size) != 0)
    {
        if (write_record(object) != before)
        {
            std::abort();
        }
        return;
    }
    check(object);
    const std::vector<std::uint8_t> record = write_record(object);
    T again;
    if (again.read(record.data(), record.size()) != 0 || write_record(again) != record)
    {
        std::abort();
    }
}

}  // namespace zq_test
