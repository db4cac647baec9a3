#include "basic/LockFreeBuffer.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace
{

// A publication whose size changes every time, so copying it reallocates: a
// slot overwritten while it is copied shows as a torn or crashing copy.
std::vector<int> make_payload(int seq)
{
    return std::vector<int>(static_cast<std::size_t>(seq % 17 + 1), seq);
}

TEST(LockFreeBufferStress, TakesSeeWholePublicationsInOrderAndTheLastOneArrives)
{
    constexpr int nbr_publications = 1000000;
    basic::LockFreeBuffer<std::vector<int>> buffer;
    buffer.init_slots(make_payload(0));
    std::thread publisher([&] {
        for (int seq = 1; seq <= nbr_publications; ++seq)
        {
            buffer.publish(make_payload(seq));
        }
    });
    std::vector<int> taken;
    int last = 0;
    bool whole_and_in_order = true;
    while (last < nbr_publications)
    {
        if (buffer.is_pending() && buffer.take(taken))
        {
            const int seq = taken.front();
            whole_and_in_order = whole_and_in_order && seq >= last && taken == make_payload(seq);
            last = seq;
        }
        std::this_thread::yield();
    }
    publisher.join();
    EXPECT_TRUE(whole_and_in_order);
    EXPECT_FALSE(buffer.is_pending());
}

}  // namespace
