#include "lumo/BankManager.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace
{

using lumo::BankManager;
using lumo::ProgramSlot;
using zq_test::Bytes;

Bytes write(const basic::SerializableInterface& object)
{
    Bytes bytes(object.get_size(), 0xEE);
    EXPECT_EQ(object.write(bytes.data(), bytes.size()), 0);
    return bytes;
}

ProgramSlot make_program(int nbr_values, const std::string& name, float last_value = 0.0f)
{
    ProgramSlot p;
    p.set_name(name.c_str());
    p.set_nbr_values(nbr_values);
    p.set_value(nbr_values - 1, last_value);
    return p;
}

// Programs "p0", "p1", ... whose last value is a quarter of their index. A
// fresh bank holds one program, which may take any shape.
BankManager make_bank(int nbr_programs, int nbr_values)
{
    BankManager bank;
    bank.set_program(0, make_program(nbr_values, "p0"));
    bank.set_nbr_programs(nbr_programs);
    for (int i = 1; i < nbr_programs; ++i)
    {
        bank.set_program(i, make_program(nbr_values, "p" + std::to_string(i), 0.25f * static_cast<float>(i)));
    }
    return bank;
}

// A bank is its header (program count, record size) and then its programs'
// records; it reads back, also from records larger than their program.
TEST(BankManager, ABankIsItsHeaderThenItsProgramsAndReadsBack)
{
    const BankManager source = make_bank(2, 6);
    const Bytes bytes = write(source);
    ASSERT_EQ(bytes.size(), 208u);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 8), (Bytes{0, 0, 0, 2, 0, 0, 0, 100}));
    EXPECT_EQ(Bytes(bytes.begin() + 108, bytes.end()), write(source.use_program(1)));
    BankManager copy;
    ASSERT_EQ(copy.read(bytes.data(), bytes.size()), 0);
    EXPECT_EQ(write(copy), bytes);

    Bytes padded(8 + 2 * 120, 0);
    std::copy(bytes.begin(), bytes.begin() + 108, padded.begin());
    std::copy(bytes.begin() + 108, bytes.end(), padded.begin() + 128);
    zq_test::set_be(padded, 4, 120, 4);
    BankManager bank;
    ASSERT_EQ(bank.read(padded.data(), padded.size()), 0);
    EXPECT_EQ(write(bank), bytes);
}

TEST(BankManager, RefusedBanksLeaveTheBankAsItWas)
{
    const Bytes good = write(make_bank(2, 6));
    auto with = [&](std::size_t pos, std::uint32_t value) {
        Bytes b = good;
        zq_test::set_be(b, pos, value, 4);
        return b;
    };
    const std::vector<Bytes> bad = {
        Bytes(good.begin(), good.end() - 1),  // the last program is one byte short
        Bytes(good.begin(), good.begin() + 7),
        with(0, 0),                           // no program
        with(0, 0x80000000u),                 // negative count
        with(0, 3),                           // more programs than bytes
        with(0, 0x7FFFFFFFu),                 // a count that would overflow the product
        with(4, 0),                           // record size 0
        with(4, 11),                          // too small for any program
        with(4, 99),                          // too small for its program
        with(4, 0xFFFFFFFFu),
        with(8 + 100 + 4, 0x00400005u),       // program 1 has 5 values, program 0 has 6
    };
    const BankManager before = make_bank(3, 4);
    const Bytes before_bytes = write(before);
    for (std::size_t i = 0; i < bad.size(); ++i)
    {
        BankManager bank = before;
        EXPECT_NE(bank.read(bad[i].data(), bad[i].size()), 0) << i;
        EXPECT_EQ(write(bank), before_bytes) << i;
    }
}

TEST(BankManager, ProgramsKeepOneShapeAndAreReachedByIndex)
{
    BankManager bank = make_bank(3, 6);
    EXPECT_NE(bank.set_program(1, make_program(3, "short")), 0);
    EXPECT_NE(bank.set_program(0, make_program(7, "long")), 0);
    EXPECT_EQ(bank.set_program(1, make_program(6, "fits")), 0);
    EXPECT_NE(bank.set_program(3, make_program(6, "out")), 0);
    EXPECT_NE(bank.set_program(-1, make_program(6, "out")), 0);
    EXPECT_EQ(bank.set_program_name(2, "renamed"), 0);
    EXPECT_NE(bank.set_program_name(3, "nowhere"), 0);
    EXPECT_EQ(bank.use_program(1).get_name(), "fits");
    EXPECT_EQ(bank.use_program(7).get_name(), "renamed");  // the nearest program
    EXPECT_EQ(bank.use_program(-3).get_name(), "p0");
    const BankManager copy = bank;  // copies are deep
    bank.set_program_name(0, "changed");
    EXPECT_EQ(copy.use_program(0).get_name(), "p0");

    // Growing adds new programs of the bank's shape; a lone program may
    // change its shape.
    bank.set_nbr_programs(5);
    EXPECT_EQ(bank.use_program(4).get_name(), "Default");
    EXPECT_EQ(bank.use_program(4).get_nbr_values(), 6);
    EXPECT_EQ(bank.get_size(), 8u + 5u * 100u);
    bank.set_nbr_programs(0);
    EXPECT_EQ(bank.get_nbr_programs(), 1);
    EXPECT_EQ(bank.set_program(0, make_program(3, "alone")), 0);
    EXPECT_EQ(bank.get_size(), 8u + 88u);
}

}  // namespace
