#include "lumo/GestureQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

std::vector<int> close_all(lumo::GestureQueue& q, const std::vector<bool>& free)
{
    std::vector<int> closed;
    for (int i; (i = q.close_first([&](int k) { return free[static_cast<std::size_t>(k)]; })) >= 0;)
    {
        closed.push_back(i);
    }
    return closed;
}

// One gesture per parameter; between the claim and the host's begin-edit the
// walk must not send end-edit.
TEST(GestureQueue, OneOpenGesturePerParameterClosedOnlyOnceCommitted)
{
    lumo::GestureQueue q(4);
    EXPECT_TRUE(q.try_open(2));
    EXPECT_FALSE(q.try_open(2));  // already open: no second begin-edit
    EXPECT_FALSE(q.try_open(-1));
    EXPECT_FALSE(q.try_open(4));
    EXPECT_TRUE(close_all(q, {true, true, true, true}).empty());
    q.commit_open(2);
    EXPECT_TRUE(q.is_open(2));
    EXPECT_EQ(close_all(q, {true, true, true, true}), (std::vector<int>{2}));
}

TEST(GestureQueue, ClosesFreeGesturesOldestFirstAndKeepsHeldOnes)
{
    lumo::GestureQueue q(5);
    for (int i : {3, 0, 4})
    {
        ASSERT_TRUE(q.try_open(i));
        q.commit_open(i);
    }
    EXPECT_EQ(close_all(q, {true, true, true, true, false}), (std::vector<int>{3, 0}));
    EXPECT_TRUE(q.is_open(4));
    EXPECT_FALSE(q.is_open(3));
    // A closed parameter can open again, and then it is the newest.
    ASSERT_TRUE(q.try_open(3));
    q.commit_open(3);
    EXPECT_EQ(close_all(q, {true, true, true, true, true}), (std::vector<int>{4, 3}));
}

}  // namespace
