#pragma once

#include "basic/SerializableInterface.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

namespace zq_test
{

// A broken promise ends the run: the fuzzer reports the input that broke it,
// and the corpus replay fails.
inline void require(bool ok)
{
    if (!ok)
    {
        std::abort();
    }
}

inline std::vector<std::uint8_t> write_record(const basic::SerializableInterface& object)
{
    std::vector<std::uint8_t> bytes(object.get_size());
    require(object.write(bytes.data(), bytes.size()) == 0);
    return bytes;
}

// Reads untrusted bytes into object: a refused record must leave the object
// as it was; an accepted one must pass check(object) and write a record that
// reads back to the same record.
template <class T, class Check>
void check_record_read(T& object, const std::uint8_t* data, std::size_t size, Check check)
{
    const std::vector<std::uint8_t> before = write_record(object);
    if (object.read(data, size) != 0)
    {
        require(write_record(object) == before);
        return;
    }
    check(object);
    const std::vector<std::uint8_t> record = write_record(object);
    T again;
    require(again.read(record.data(), record.size()) == 0 && write_record(again) == record);
}

}  // namespace zq_test
