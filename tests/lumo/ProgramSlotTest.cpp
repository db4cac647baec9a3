#include "lumo/ProgramSlot.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
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
Bytes make_record(std::int16_t name_size, std::int16_t nbr_values, std::uint32_t nbr_extra, const char* name)
{
    Bytes b;
    zq_test::put_be(b, 0xCAFE0007u, 4);
    zq_test::put_be(b, static_cast<std::uint16_t>(name_size), 2);
    zq_test::put_be(b, static_cast<std::uint16_t>(nbr_values), 2);
    zq_test::put_be(b, nbr_extra, 4);
    Bytes field(static_cast<std::size_t>(std::max<int>(name_size, 0)), 0);
    std::copy_n(name, std::min(std::strlen(name), field.size()), field.begin());
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

ProgramSlot make_program(int nbr_values, const char* name)
{
    ProgramSlot p;
    p.set_name(name);
    p.set_nbr_values(nbr_values);
    for (int i = 0; i < nbr_values; ++i)
    {
        p.set_value(i, 0.1f * static_cast<float>(i));
    }
    return p;
}

void expect_same(const ProgramSlot& a, const ProgramSlot& b)
{
    EXPECT_EQ(write(a), write(b));
}

TEST(ProgramSlot, TheDefaultProgramOfSixValuesIsA100ByteRecord)
{
    ProgramSlot program;
    program.set_nbr_values(6);
    const Bytes bytes = write(program);
    Bytes expected = {0, 0, 0, 0, 0x00, 0x40, 0x00, 0x06, 0, 0, 0, 0, 'D', 'e', 'f', 'a', 'u', 'l', 't'};
    expected.resize(100, 0);
    EXPECT_EQ(bytes, expected);
    Bytes short_buffer(99, 0x55);
    EXPECT_NE(program.write(short_buffer.data(), short_buffer.size()), 0);
    EXPECT_EQ(short_buffer, Bytes(99, 0x55));
}

TEST(ProgramSlot, RecordsReadBackToTheSameProgram)
{
    ProgramSlot source = make_program(6, "Sixty-three characters is the longest name a program can take!!");
    const Bytes record = write(source);
    ProgramSlot copy;
    ASSERT_EQ(copy.read(record.data(), record.size()), 0);
    expect_same(copy, source);
    EXPECT_EQ(copy.get_name().size(), 63u);
}

TEST(ProgramSlot, ReadersFollowTheNameFieldSizeOfTheRecord)
{
    const Bytes record = make_record(32, 3, 2, "short field");
    ProgramSlot program = make_program(6, "old");
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    EXPECT_EQ(program.get_name(), "short field");
    EXPECT_EQ(program.get_tag(), 0xCAFE0007u);
    ASSERT_EQ(program.get_nbr_values(), 3);  // the record's count, not the old one
    EXPECT_FLOAT_EQ(program.get_value(0), 0.125f);
    EXPECT_FLOAT_EQ(program.get_value(2), 0.375f);
    EXPECT_EQ(program.use_extra_data(), (std::vector<std::uint8_t>{0xA0, 0xA1}));
    // Written back with the usual name field: 76 + 12 + 2 bytes.
    EXPECT_EQ(program.get_size(), 90u);
}

TEST(ProgramSlot, ANameNeverReadsPastItsField)
{
    Bytes record = make_record(8, 1, 0, "12345678");  // no zero inside the field
    ProgramSlot program;
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    EXPECT_EQ(program.get_name(), "12345678");
    record = make_record(0, 1, 0, "");
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    EXPECT_EQ(program.get_name(), "");
    record = make_record(100, 0, 0, "");
    std::fill(record.begin() + 12, record.end(), 'n');
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    EXPECT_EQ(program.get_name(), std::string(63, 'n'));
}

TEST(ProgramSlot, RefusedRecordsLeaveTheProgramAsItWas)
{
    const ProgramSlot before = make_program(6, "keep me");
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
        expect_same(program, before);
        EXPECT_EQ(program.get_name(), "keep me");
    }
    ProgramSlot program = before;
    EXPECT_NE(program.read(nullptr, 100), 0);
    expect_same(program, before);
}

TEST(ProgramSlot, ValuesFromARecordAreKeptNormalized)
{
    ProgramSlot source;
    source.set_nbr_values(4);
    source.set_value(0, std::numeric_limits<float>::quiet_NaN());
    source.set_value(1, -3.0f);
    source.set_value(2, std::numeric_limits<float>::infinity());
    source.set_value(3, 0.5f);
    const Bytes record = write(source);
    ProgramSlot program;
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    EXPECT_EQ(program.get_value(0), 0.0f);
    EXPECT_EQ(program.get_value(1), 0.0f);
    EXPECT_EQ(program.get_value(2), 1.0f);
    EXPECT_EQ(program.get_value(3), 0.5f);
}

TEST(ProgramSlot, NamesAndValuesStayInTheirBounds)
{
    ProgramSlot program;
    program.set_name(nullptr);
    EXPECT_EQ(program.get_name(), "");
    program.set_name(std::string(200, 'z').c_str());
    EXPECT_EQ(program.get_name(), std::string(63, 'z'));

    program.set_nbr_values(2);
    program.set_value(5, 0.7f);
    program.set_value(-1, 0.7f);
    EXPECT_EQ(program.get_value(5), 0.0f);
    EXPECT_EQ(program.get_value(-1), 0.0f);
    program.set_nbr_values(-4);
    EXPECT_EQ(program.get_nbr_values(), 0);
    program.set_nbr_values(100000);
    EXPECT_EQ(program.get_nbr_values(), ProgramSlot::max_nbr_values);
}

TEST(ProgramSlot, ClearKeepsTheShapeOnly)
{
    Bytes record = make_record(64, 3, 2, "named");
    ProgramSlot program;
    ASSERT_EQ(program.read(record.data(), record.size()), 0);
    program.clear();
    EXPECT_EQ(program.get_name(), "Default");
    EXPECT_EQ(program.get_tag(), 0u);
    EXPECT_EQ(program.get_nbr_values(), 3);
    EXPECT_EQ(program.get_value(1), 0.0f);
    EXPECT_EQ(program.use_extra_data(), (std::vector<std::uint8_t>{0, 0}));
}

}  // namespace
