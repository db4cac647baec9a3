#include "sys/ResourceTable.h"

#include <gtest/gtest.h>

namespace
{

const std::uint8_t first_bytes[] = {1, 2, 3};
const std::uint8_t second_bytes[] = {4, 5};

TEST(ResourceTable, TablesRegisterForTheirLifetimeAndTheNewestWins)
{
    const sys::ResourceTable::Entry first[] = {{"TEST", "alpha", first_bytes, sizeof(first_bytes)},
                                               {"TEST", "beta", first_bytes, 1}};
    const sys::ResourceTable::Entry second[] = {{"TEST", "BETA", second_bytes, sizeof(second_bytes)}};
    {
        const sys::ResourceTable a(first, 2);
        {
            const sys::ResourceTable b(second, 1);
            const sys::ResourceTable::Entry* beta = sys::ResourceTable::find("TEST", "BETA");
            ASSERT_NE(beta, nullptr);
            EXPECT_EQ(beta->data, second_bytes);
            EXPECT_EQ(beta->size, sizeof(second_bytes));
            const sys::ResourceTable::Entry* alpha = sys::ResourceTable::find("TEST", "alpha");
            ASSERT_NE(alpha, nullptr);
            EXPECT_EQ(alpha->data, first_bytes);
        }
        const sys::ResourceTable::Entry* beta = sys::ResourceTable::find("TEST", "beta");
        ASSERT_NE(beta, nullptr);
        EXPECT_EQ(beta->data, first_bytes);
        EXPECT_EQ(sys::ResourceTable::find("TEST", "bet"), nullptr);
        EXPECT_EQ(sys::ResourceTable::find("TEST", "betaa"), nullptr);
        EXPECT_EQ(sys::ResourceTable::find("TESTS", "beta"), nullptr);
        EXPECT_EQ(sys::ResourceTable::find(nullptr, "beta"), nullptr);
        EXPECT_EQ(sys::ResourceTable::find("TEST", nullptr), nullptr);
    }
    EXPECT_EQ(sys::ResourceTable::find("TEST", "alpha"), nullptr);
}

}  // namespace
