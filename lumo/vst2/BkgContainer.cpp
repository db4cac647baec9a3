#include "lumo/vst2/BkgContainer.h"

namespace lumo
{

void BkgContainer::process()
{
    const int n = get_size();
    for (int i = 0; i < n; ++i)
    {
        if (BkgInterface* task = _tasks[static_cast<std::size_t>(i)].load(std::memory_order_acquire))
        {
            task->process();
        }
    }
}

bool BkgContainer::add(BkgInterface* task)
{
    const int n = _size.load(std::memory_order_relaxed);
    if (n >= capacity)
    {
        return false;
    }
    _tasks[static_cast<std::size_t>(n)].store(task, std::memory_order_release);
    _size.store(n + 1, std::memory_order_release);
    return true;
}

void BkgContainer::remove_last()
{
    const int n = _size.load(std::memory_order_relaxed);
    if (n <= 0)
    {
        return;
    }
    _size.store(n - 1, std::memory_order_release);
    _tasks[static_cast<std::size_t>(n - 1)].store(nullptr, std::memory_order_release);
}

}  // namespace lumo
