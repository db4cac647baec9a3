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

TEST(BkgContainer, RunsTasksInOrderRemovesFromTheEndAndKeepsToItsCapacity)
{
    std::string log;
    RecordingTask a(log, 'a');
    RecordingTask b(log, 'b');
    lumo::BkgContainer c;
    ASSERT_TRUE(c.add(&a));
    ASSERT_TRUE(c.add(&b));
    c.process();
    c.remove_last();
    c.process();
    c.remove_last();
    c.remove_last();  // removing from an empty list is harmless
    c.process();
    EXPECT_EQ(log, "aba");

    for (int i = 0; i < lumo::BkgContainer::capacity; ++i)
    {
        ASSERT_TRUE(c.add(&a));
    }
    EXPECT_FALSE(c.add(&b));
    log.clear();
    c.process();
    EXPECT_EQ(log, std::string(lumo::BkgContainer::capacity, 'a'));
}

}  // namespace
