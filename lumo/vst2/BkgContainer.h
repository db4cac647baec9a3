#pragma once

#include "lumo/vst2/BkgInterface.h"

#include <array>
#include <atomic>

namespace lumo
{

// Runs a short list of tasks in the order they were added. Tasks are added and
// removed from the host's threads while the background thread walks the list,
// so the list is a fixed array of atomic slots with an atomic count: the walker
// sees every task that was fully added, and a task being removed may run one
// last round (tasks are owned elsewhere and outlive the container's use).
class BkgContainer : public BkgInterface
{
public:
    static constexpr int capacity = 8;

    void process() override;
    void* get_context() const override { return _context; }
    void set_context(void* context) override { _context = context; }

    // false when the list is full. Not owned.
    bool add(BkgInterface* task);
    // Takes the last task off; nothing when empty.
    void remove_last();
    int get_size() const { return _size.load(std::memory_order_acquire); }

private:
    void* _context = nullptr;
    std::array<std::atomic<BkgInterface*>, capacity> _tasks{};
    std::atomic<int> _size{0};
};

}  // namespace lumo
