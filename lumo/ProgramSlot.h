#pragma once

#include "basic/SerializableInterface.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumo
{

// One program: a name, normalized parameter values in internal-index order,
// opaque bytes of the effect and a tag that is kept as it came.
//
// Record (all numbers big-endian):
//     0   tag                      4 bytes
//     4   name field size s        2 bytes, written as 64
//     6   value count n            2 bytes
//     8   extra byte count m       4 bytes
//     12  name, zero-terminated    s bytes
//     12 + s           values      4n bytes, IEEE single precision
//     12 + s + 4n      extra bytes m bytes
// Readers follow s, so records of another name size read correctly.
class ProgramSlot : public basic::SerializableInterface
{
public:
    static constexpr int name_capacity = 64;
    static constexpr std::size_t header_size = 12;
    static constexpr int max_nbr_values = 32767;

    ProgramSlot();
    ProgramSlot(const ProgramSlot& other) = default;
    ProgramSlot& operator=(const ProgramSlot& other) = default;
    ~ProgramSlot() override = default;

    // Values are sanitized on the way in: NaN becomes 0, the rest is clamped
    // to [0, 1]. A record is refused when a count or size is negative or the
    // record would run past size.
    int read(const std::uint8_t* data, std::size_t size) override;
    int write(std::uint8_t* data, std::size_t capacity) const override;
    std::size_t get_size() const override;

    std::string get_name() const { return _name; }
    // At most 63 characters are kept; null gives the empty name.
    void set_name(const char* name);

    int get_nbr_values() const { return static_cast<int>(_values.size()); }
    // Clamped to 0 .. max_nbr_values, the most a record can hold; new values are 0.
    void set_nbr_values(int count);
    // 0 for an index out of range.
    float get_value(int index) const;
    // Ignored for an index out of range.
    void set_value(int index, float value);

    const std::vector<std::uint8_t>& use_extra_data() const { return _extra; }
    std::uint32_t get_tag() const { return _tag; }

    // Same value count and extra byte count: records of the same size.
    bool has_same_shape(const ProgramSlot& other) const;
    // Makes this a new program of the same shape: name "Default", tag 0, every
    // value and extra byte 0.
    void clear();

private:
    static float sanitize(float value);

    std::vector<float> _values;
    std::vector<std::uint8_t> _extra;
    char _name[name_capacity];
    std::uint32_t _tag = 0;
};

}  // namespace lumo
