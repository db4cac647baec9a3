#pragma once

#include <atomic>
#include <memory>
#include <stdexcept>

namespace basic
{

// A single-producer, single-consumer ring of fixed capacity that never blocks
// and never allocates after construction. One slot always stays free to tell
// full from empty, so a ring of capacity N holds N - 1 elements.
//
// The producer owns the write index, the consumer the read index. Each side
// writes its slot before storing its own index (release) and reads the other
// side's index (acquire) before touching a slot, so an element is complete
// before the consumer sees it and is copied out before the producer reuses it.
template <class T>
class LockFreeRingFifo
{
public:
    explicit LockFreeRingFifo(int capacity) : _capacity(capacity)
    {
        if (capacity < 1)
        {
            throw std::runtime_error("basic::LockFreeRingFifo::LockFreeRingFifo() : Invalid capacity.");
        }
        _slots.reset(new T[static_cast<std::size_t>(capacity)]);
    }
    virtual ~LockFreeRingFifo() = default;
    LockFreeRingFifo(const LockFreeRingFifo&) = delete;
    LockFreeRingFifo& operator=(const LockFreeRingFifo&) = delete;

    int get_capacity() const { return _capacity; }

    // Producer only. A full ring drops the element and keeps everything it holds.
    bool push(const T& elt)
    {
        const int write = _write.load(std::memory_order_relaxed);
        const int next = (write + 1) % _capacity;
        if (next == _read.load(std::memory_order_acquire))
        {
            return false;
        }
        _slots[static_cast<std::size_t>(write)] = elt;
        _write.store(next, std::memory_order_release);
        return true;
    }

    // Consumer only: the oldest element, or false when the ring is empty.
    bool pop(T& elt)
    {
        const int read = _read.load(std::memory_order_relaxed);
        if (read == _write.load(std::memory_order_acquire))
        {
            return false;
        }
        elt = _slots[static_cast<std::size_t>(read)];
        _read.store((read + 1) % _capacity, std::memory_order_release);
        return true;
    }

    // Consumer only.
    bool is_empty() const
    {
        return _read.load(std::memory_order_relaxed) == _write.load(std::memory_order_acquire);
    }

private:
    const int _capacity;
    std::atomic<int> _write{0};
    std::atomic<int> _read{0};
    std::unique_ptr<T[]> _slots;
};

}  // namespace basic
