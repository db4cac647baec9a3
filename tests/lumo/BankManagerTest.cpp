#include "lumo/BankManager.h"
#include "tests/support/Bytes.h"

#include <gtest/gtest.h>

#include <cstdint>
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

ProgramSlot make_program(int nbr_values, const char* name, float value)
{
    ProgramSlot p;
    p.set_name(name);
    p.set_nbr_values(nbr_values);
    for (int i = 0; i < nbr_values; ++i)
    {
        p.set_value(i, value);
    }
    return p;
}

BankManager make_bank(int nbr_programs, int nbr_values)
{
    BankManager bank;
    bank.set_program(0, make_program(nbr_values, "p0", 0.0f));
    bank.set_nbr_programs(nbr_programs);
    for (int i = 1; i < nbr_programs; ++i)
    {
        bank.set_program(i, make_program(nbr_values, ("p" + std::to_string(i)).c_str(), 0.25f * i));
    }
    return bank;
}

// A bank is its header (program count, record size) and then its programs'
// records; it reads back program by program.
TEST(BankManager, ABankIsItsHeaderThenItsProgramsAndReadsBack)
{
    const BankManager source = make_bank(2, 6);
    const Bytes bytes = write(source);
    ASSERT_EQ(bytes.size(), 208u);
    EXPECT_EQ(Bytes(bytes.begin(), bytes.begin() + 8), (Bytes{0, 0, 0, 2, 0, 0, 0, 100}));
    EXPECT_EQ(Bytes(bytes.begin() + 108, bytes.end()), write(source.use_program(1)));
    BankManager copy;
    ASSERT_EQ(copy.read(bytes.data(), bytes.size()), 0);
    ASSERT_EQ(copy.get_nbr_programs(), 2);
    EXPECT_EQ(copy.use_program(1).get_name(), "p1");
    EXPECT_FLOAT_EQ(copy.use_program(1).get_value(5), 0.25f);
    EXPECT_EQ(write(copy), bytes);
}

TEST(BankManager, RecordsLargerThanTheirProgramAreRead)
{
    const BankManager source = make_bank(2, 6);
    const Bytes packed = write(source);
    // The same two programs, each in a record of 120 bytes.
    Bytes padded(8 + 2 * 120, 0);
    zq_test::set_be(padded, 0, 2, 4);
    zq_test::set_be(padded, 4, 120, 4);
    std::copy(packed.begin() + 8, packed.begin() + 108, padded.begin() + 8);
    std::copy(packed.begin() + 108, packed.end(), padded.begin() + 128);
    BankManager bank;
    ASSERT_EQ(bank.read(padded.data(), padded.size()), 0);
    EXPECT_EQ(write(bank), packed);
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

TEST(BankManager, AllProgramsKeepOneShape)
{
    BankManager bank = make_bank(3, 6);
    EXPECT_NE(bank.set_program(1, make_program(3, "short", 0.5f)), 0);
    EXPECT_NE(bank.set_program(0, make_program(7, "long", 0.5f)), 0);
    EXPECT_EQ(bank.set_program(1, make_program(6, "fits", 0.5f)), 0);
    EXPECT_EQ(bank.use_program(1).get_name(), "fits");
    EXPECT_NE(bank.set_program(3, make_program(6, "out", 0.5f)), 0);
    EXPECT_NE(bank.set_program(-1, make_program(6, "out", 0.5f)), 0);

    // Growing adds new programs of the bank's shape.
    bank.set_nbr_programs(5);
    EXPECT_EQ(bank.use_program(4).get_name(), "Default");
    EXPECT_EQ(bank.use_program(4).get_nbr_values(), 6);
    EXPECT_EQ(bank.get_size(), 8u + 5u * 100u);

    // A lone program may change its shape.
    bank.set_nbr_programs(0);
    EXPECT_EQ(bank.get_nbr_programs(), 1);
    EXPECT_EQ(bank.set_program(0, make_program(3, "alone", 0.5f)), 0);
    EXPECT_EQ(bank.get_size(), 8u + 88u);
}

TEST(BankManager, ProgramsAreReachedByIndexAndRenamed)
{
    BankManager bank = make_bank(2, 6);
    EXPECT_EQ(bank.set_program_name(1, "renamed"), 0);
    EXPECT_EQ(bank.use_program(1).get_name(), "renamed");
    EXPECT_NE(bank.set_program_name(2, "nowhere"), 0);
    EXPECT_EQ(bank.use_program(7).get_name(), "renamed");  // the nearest program
    EXPECT_EQ(bank.use_program(-3).get_name(), "p0");
    // Copies are deep.
    const BankManager copy = bank;
    bank.set_program_name(0, "changed");
    EXPECT_EQ(copy.use_program(0).get_name(), "p0");
}

}  // namespace
