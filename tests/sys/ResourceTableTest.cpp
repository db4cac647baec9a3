#include "sys/ResourceTable.h"

#include <gtest/gtest.h>

namespace
{

const std::uint8_t first_bytes[] = {1, 2, 3};
const std::uint8_t second_bytes[] = {4, 5};

const std::uint8_t* data_of(const char* type, const char* name)
{
    const sys::ResourceTable::Entry* entry = sys::ResourceTable::find(type, name);
    return entry != nullptr ? entry->data : nullptr;
}

TEST(ResourceTable, TablesRegisterForTheirLifetimeAndTheNewestWins)
{
    const sys::ResourceTable::Entry first[] = {{"TEST", "alpha", first_bytes, sizeof(first_bytes)},
                                               {"TEST", "beta", first_bytes, 1}};
    const sys::ResourceTable::Entry second[] = {{"TEST", "BETA", second_bytes, sizeof(second_bytes)}};
    {
        const sys::ResourceTable a(first, 2);
        {
            const sys::ResourceTable b(second, 1);
            EXPECT_EQ(data_of("TEST", "BETA"), second_bytes);
            EXPECT_EQ(sys::ResourceTable::find("TEST", "beta")->size, sizeof(second_bytes));
            EXPECT_EQ(data_of("TEST", "alpha"), first_bytes);
        }
        EXPECT_EQ(data_of("TEST", "beta"), first_bytes);
        EXPECT_EQ(data_of("TEST", "bet"), nullptr);
        EXPECT_EQ(data_of("TEST", "betaa"), nullptr);
        EXPECT_EQ(data_of("TESTS", "beta"), nullptr);
        EXPECT_EQ(data_of(nullptr, "beta"), nullptr);
        EXPECT_EQ(data_of("TEST", nullptr), nullptr);
    }
    EXPECT_EQ(data_of("TEST", "alpha"), nullptr);
}

}  // namespace
