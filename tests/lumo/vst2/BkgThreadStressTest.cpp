#include "lumo/vst2/BkgContainer.h"
#include "lumo/vst2/BkgThreadHandlerInterface.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace
{

class CountingTask : public lumo::BkgInterface
{
public:
    void process() override { rounds.fetch_add(1); }
    void* get_context() const override { return nullptr; }
    void set_context(void*) override {}
    std::atomic<int> rounds{0};
};

TEST(BkgThreadStress, RunsTheHandlerUntilStoppedAndAcknowledges)
{
    CountingTask task;
    lumo::BkgContainer container;
    auto thread = lumo::create_bkg_thread();
    thread->stop();  // a thread never started stops at once, and can start later
    thread->set_handler(&container);
    ASSERT_EQ(thread->start(), 0);
    EXPECT_EQ(thread->start(), 0);  // a second start keeps the one thread

    // Tasks come and go while the thread walks the list.
    for (int i = 0; i < 200; ++i)
    {
        container.add(&task);
        std::this_thread::yield();
        container.remove_last();
    }
    container.add(&task);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (task.rounds.load() < 3 && std::chrono::steady_clock::now() < deadline)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_GE(task.rounds.load(), 3);

    thread->stop();
    const int after_stop = task.rounds.load();
    std::this_thread::sleep_for(std::chrono::milliseconds(120));
    EXPECT_EQ(task.rounds.load(), after_stop);
    thread->stop();  // stopping a stopped thread returns at once
}

}  // namespace
