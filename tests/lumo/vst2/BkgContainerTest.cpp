#include "lumo/vst2/BkgContainer.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

class RecordingTask : public lumo::BkgInterface
{
public:
    RecordingTask(std::string& log, char id) : _log(log), _id(id) {}
    void process() override { _log += _id; }
    void* get_context() const override { return nullptr; }
    void set_context(void*) override {}

private:
    std::string& _log;
    char _id;
};

TEST(BkgContainer, RunsTasksInOrderAndRemovesFromTheEnd)
{
    std::string log;
    RecordingTask a(log, 'a');
    RecordingTask b(log, 'b');
    lumo::BkgContainer c;
    c.process();
    EXPECT_EQ(log, "");

    ASSERT_TRUE(c.add(&a));
    ASSERT_TRUE(c.add(&b));
    c.process();
    EXPECT_EQ(log, "ab");

    c.remove_last();
    c.process();
    EXPECT_EQ(log, "aba");

    c.remove_last();
    c.remove_last();  // removing from an empty list is harmless
    EXPECT_EQ(c.get_size(), 0);
    c.process();
    EXPECT_EQ(log, "aba");
}

TEST(BkgContainer, RefusesTasksBeyondItsCapacity)
{
    std::string log;
    RecordingTask t(log, 't');
    lumo::BkgContainer c;
    for (int i = 0; i < lumo::BkgContainer::capacity; ++i)
    {
        ASSERT_TRUE(c.add(&t));
    }
    EXPECT_FALSE(c.add(&t));
    c.process();
    EXPECT_EQ(log.size(), static_cast<std::size_t>(lumo::BkgContainer::capacity));
}

}  // namespace
