#include "lumo/ProgramSlot.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

namespace
{

using lumo::ProgramSlot;
using zq_test::Bytes;

Bytes write(const ProgramSlot& program)
{
    Bytes bytes(program.get_size(), 0xEE);
    EXPECT_EQ(program.write(bytes.data(), bytes.size()), 0);
    return bytes;
}

// A record with a chosen layout: tag 0xCAFE0007, the name in a field of
// name_size bytes, values 0.125, 0.25, ... and extra bytes A0, A1, ...
Bytes make_record(std::int16_t name_size, std::int16_t nbr_values, std::uint32_t nbr_extra, const std::string& name)
{
    Bytes b;
    zq_test::put_be(b, 0xCAFE0007u, 4);
    zq_test::put_be(b, static_cast<std::uint16_t>(name_size), 2);
    zq_test::put_be(b, static_cast<std::uint16_t>(nbr_values), 2);
    zq_test::put_be(b, nbr_extra, 4);
    Bytes field(static_cast<std::size_t>(std::max<int>(name_size, 0)), 0);
    std::copy_n(name.begin(), std::min(name.size(), field.size()), field.begin());
    zq_test::put_bytes(b, field);
    for (int i = 0; i < std::max<int>(nbr_values, 0); ++i)
    {
        const float v = 0.125f * static_cast<float>(i + 1);
        std::uint32_t bits;
        std::memcpy(&bits, &v, 4);
        zq_test::put_be(b, bits, 4);
    }
    for (std::uint32_t i = 0; i < nbr_extra; ++i)
    {
        b.push_back(static_cast<std::uint8_t>(0xA0 + i));
    }
    return b;
}

TEST(ProgramSlot, ASixValueProgramIsA100ByteRecordThatReadsBack)
{
    ProgramSlot program;
    program.set_nbr_values(6);
    Bytes expected = {0, 0, 0, 0, 0x00, 0x40, 0x00, 0x06, 0, 0, 0, 0, 'D', 'e', 'f', 'a', 'u', 'l', 't'};
    expected.resize(100, 0);
    EXPECT_EQ(write(program), expected);
    Bytes short_buffer(99, 0x55);
    EXPECT_NE(program.write(short_buffer.data(), short_buffer.size()), 0);
    EXPECT_EQ(short_buffer, Bytes(99, 0x55));

    program.set_name("Sixty-three characters is the longest name a program can take!!");
    program.set_value(5, 0.5f);
    const Bytes record = write(program);
    ProgramSlot copy;
    ASSERT_EQ(copy.read(record.data(), record.size()), 0);
    EXPECT_EQ(write(copy), record);
}

// Readers follow the record's own layout; the name never reads past its
// field nor beyond 63 characters, and the program is written back with the
// usual 64-byte field.
TEST(ProgramSlot, ReadersFollowTheLayoutOfTheRecord)
{
    const struct
    {
        std::int16_t name_size;
        std::int16_t nbr_values;
        std::uint32_t nbr_extra;
        std::string name;
        std::string read_name;
    } cases[] = {
        {32, 3, 2, "short field", "short field"},
        {8, 1, 0, "12345678", "12345678"},
        {0, 1, 0, "", ""},
        {100, 0, 0, std::string(100, 'n'), std::string(63, 'n')},
    };
    for (const auto& c : cases)
    {
        const Bytes record = make_record(c.name_size, c.nbr_values, c.nbr_extra, c.name);
        ProgramSlot program;
        program.set_nbr_values(6);
        ASSERT_EQ(program.read(record.data(), record.size()), 0) << c.name_size;
        EXPECT_EQ(program.get_name(), c.read_name);
        EXPECT_EQ(program.get_tag(), 0xCAFE0007u);
        ASSERT_EQ(program.get_nbr_values(), c.nbr_values);
        for (int i = 0; i < c.nbr_values; ++i)
        {
            EXPECT_FLOAT_EQ(program.get_value(i), 0.125f * static_cast<float>(i + 1));
        }
        EXPECT_EQ(program.use_extra_data(), Bytes(record.end() - c.nbr_extra, record.end()));
        EXPECT_EQ(program.get_size(), 76u + 4u * c.nbr_values + c.nbr_extra);
    }
}

TEST(ProgramSlot, RefusedRecordsLeaveTheProgramAsItWas)
{
    ProgramSlot before;
    before.set_name("keep me");
    before.set_nbr_values(6);
    const Bytes good = make_record(64, 2, 3, "x");
    std::vector<Bytes> bad = {
        Bytes(good.begin(), good.end() - 1),  // one byte short
        Bytes(good.begin(), good.begin() + 11),
        make_record(-1, 2, 0, "negative name size"),
        make_record(64, -2, 0, "negative value count"),
        good,
    };
    std::fill(bad[4].begin() + 8, bad[4].begin() + 12, 0xFF);  // extra byte count 2^32 - 1
    for (const Bytes& record : bad)
    {
        ProgramSlot program = before;
        EXPECT_NE(program.read(record.data(), record.size()), 0);
        EXPECT_EQ(write(program), write(before));
    }
    ProgramSlot program = before;
    EXPECT_NE(program.read(nullptr, 100), 0);
    EXPECT_EQ(write(program), write(before));
}

TEST(ProgramSlot, ValuesFromARecordAreKeptNormalized)
{
    const float stored[] = {std::numeric_limits<float>::quiet_NaN(), -3.0f, std::numeric_limits<float>::infinity(),
                            0.5f};
    const float read[] = {0.0f, 0.0f, 1.0f, 0.5f};
    ProgramSlot source;
    source.set_nbr_values(4);
    for (int i = 0; i < 4; ++i)
    {
        source.set_value(i, stored[i]);
    }
    const Bytes record = write(source);
    ProgramSlot program;
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    for (int i = 0; i < 4; ++i)
    {
        EXPECT_EQ(program.get_value(i), read[i]) << i;
    }
}

TEST(ProgramSlot, ValuesStayInTheirBounds)
{
    ProgramSlot program;
    program.set_nbr_values(6);
    program.set_value(5, 0.7f);
    program.set_nbr_values(2);  // what was beyond the new count is not read
    program.set_value(2, 0.7f);
    program.set_value(-1, 0.7f);
    EXPECT_EQ(program.get_value(5), 0.0f);
    EXPECT_EQ(program.get_value(2), 0.0f);
    EXPECT_EQ(program.get_value(-1), 0.0f);
    program.set_nbr_values(-4);
    EXPECT_EQ(program.get_nbr_values(), 0);
    program.set_nbr_values(100000);
    EXPECT_EQ(program.get_nbr_values(), ProgramSlot::max_nbr_values);
}

TEST(ProgramSlot, ClearKeepsTheShapeOnly)
{
    const Bytes record = make_record(64, 3, 2, "named");
    ProgramSlot program;
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    program.clear();
    EXPECT_EQ(program.get_name(), "Default");
    EXPECT_EQ(program.get_tag(), 0u);
    EXPECT_EQ(program.get_nbr_values(), 3);
    EXPECT_EQ(program.get_value(1), 0.0f);
    EXPECT_EQ(program.use_extra_data(), Bytes(2, 0));
}

}  // namespace
