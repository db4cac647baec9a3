#include "lumo/lv2/Lv2BindingRecord.h"
#include "lumo/midi/MidiMgr.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace
{

using Bytes = std::vector<std::uint8_t>;
using Ids = std::vector<std::int32_t>;

constexpr std::int32_t cc74 = 74 << 16;
constexpr std::int32_t nrpn2 = (99 << 16) + 2;

Bytes record(const Ids& ids, std::uint32_t count)
{
    Bytes out{static_cast<std::uint8_t>(count >> 24), static_cast<std::uint8_t>(count >> 16),
              static_cast<std::uint8_t>(count >> 8), static_cast<std::uint8_t>(count)};
    for (const std::int32_t id : ids)
    {
        const auto u = static_cast<std::uint32_t>(id);
        out.insert(out.end(), {static_cast<std::uint8_t>(u >> 24), static_cast<std::uint8_t>(u >> 16),
                               static_cast<std::uint8_t>(u >> 8), static_cast<std::uint8_t>(u)});
    }
    return out;
}

bool reads(const Bytes& bytes, Ids& ids)
{
    return lumo::Lv2BindingRecord::read(bytes.data(), bytes.size(), ids);
}

TEST(Lv2BindingRecord, TheMapGoesThroughARecordUnchangedAndReplacesTheOneThere)
{
    lumo::MidiMgr saved;
    saved.bind(0, 99, 0);
    saved.bind(2, 74, 0);
    saved.bind(4, 101, 7);
    const Bytes bytes = lumo::Lv2BindingRecord::write(saved);
    EXPECT_EQ(bytes, record({99 << 16, -1, cc74, -1, (101 << 16) + 7}, 5));

    lumo::MidiMgr restored;
    restored.bind(1, 99, 1);
    restored.bind(9, 11, 0);
    Ids ids;
    ASSERT_TRUE(reads(bytes, ids));
    lumo::Lv2BindingRecord::apply(ids, restored);
    EXPECT_EQ(lumo::Lv2BindingRecord::write(restored), bytes);
    EXPECT_EQ(lumo::Lv2BindingRecord::write(lumo::MidiMgr()), record({}, 0));
}

TEST(Lv2BindingRecord, AMalformedRecordIsRefusedWhole)
{
    Ids ids{123};
    EXPECT_FALSE(reads(record({cc74, nrpn2}, 3), ids));           // shorter than its count
    EXPECT_FALSE(reads(record({cc74, nrpn2, -1}, 2), ids));       // longer
    EXPECT_FALSE(reads(Bytes{0, 0, 0}, ids));                     // no count
    EXPECT_FALSE(reads(record(Ids(257, -1), 257), ids));          // more than the map holds
    EXPECT_FALSE(reads(record({cc74, -1, cc74}, 3), ids));        // one controller, two parameters
    EXPECT_FALSE(reads(record({(99 << 16) + 16384}, 1), ids));    // an NRPN beyond 14 bits
    EXPECT_FALSE(reads(record({cc74 + 1}, 1), ids));              // a controller with a number
    EXPECT_FALSE(reads(record({-2}, 1), ids));
    EXPECT_EQ(ids, Ids{123});
    EXPECT_TRUE(reads(record(Ids(256, -1), 256), ids));
    EXPECT_TRUE(reads(record({-1, nrpn2}, 2), ids));
    EXPECT_EQ(ids, (Ids{-1, nrpn2}));
}

}  // namespace
