#include "basic/LockFreeBuffer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <thread>
#include <vector>

namespace
{

// A publication whose size changes every time, so copying it reallocates:
// a slot overwritten while it is copied shows as a torn or crashing copy.
struct Payload
{
    int seq = 0;
    std::vector<int> data{0};
};

Payload make_payload(int seq)
{
    Payload p;
    p.seq = seq;
    p.data.assign(static_cast<std::size_t>(seq % 17 + 1), seq);
    return p;
}

bool is_whole(const Payload& p)
{
    if (p.data.size() != static_cast<std::size_t>(p.seq % 17 + 1))
    {
        return false;
    }
    for (const int v : p.data)
    {
        if (v != p.seq)
        {
            return false;
        }
    }
    return true;
}

constexpr int nbr_publications = 1000000;

TEST(LockFreeBufferStress, TakesSeeWholePublicationsInOrderAndTheLastOneArrives)
{
    basic::LockFreeBuffer<Payload> buffer;
    buffer.init_slots(make_payload(0));
    std::thread publisher([&] {
        for (int seq = 1; seq <= nbr_publications; ++seq)
        {
            buffer.publish(make_payload(seq));
        }
    });
    Payload taken;
    int last = -1;
    int takes = 0;
    int missed = 0;
    bool in_order = true;
    bool all_whole = true;
    while (last < nbr_publications)
    {
        if (!buffer.is_pending())
        {
            std::this_thread::yield();
            continue;
        }
        if (!buffer.take(taken))
        {
            ++missed;
            continue;
        }
        ++takes;
        all_whole = all_whole && is_whole(taken);
        in_order = in_order && taken.seq >= last;
        last = taken.seq;
    }
    publisher.join();
    EXPECT_TRUE(all_whole);
    EXPECT_TRUE(in_order);
    EXPECT_FALSE(buffer.is_pending());
    RecordProperty("takes", takes);
    RecordProperty("missed", missed);
    std::printf("%d publications, %d takes, %d takes lost the race\n", nbr_publications, takes, missed);
}

}  // namespace
