#pragma once

#include <atomic>

namespace basic
{

// Hands whole objects from a publishing thread to a real-time consumer through
// two slots, without locks and without allocating on the consumer's side.
//
// The publisher writes slot w. The consumer takes slot w by first claiming it
// (o := w, taken := true) and copying it only when, after the claim, no
// publication is running and the claim is still intact. A publication that
// starts later sees the claim and moves to the other slot, so a slot is never
// written while it is being copied. A take that loses the race copies nothing
// and leaves the buffer pending, to be taken at the next try.
//
// The claim and the busy flag form a store-then-load handshake between the two
// threads (each stores its own flag, then loads the other's); that needs
// sequentially consistent ordering, which plain release/acquire does not give.
//
// One publisher at a time and one consumer. Publications may allocate (they
// copy T); is_pending() and take() only allocate when copying T does.
template <class T>
class LockFreeBuffer
{
public:
    LockFreeBuffer() = default;
    virtual ~LockFreeBuffer() = default;
    LockFreeBuffer(const LockFreeBuffer&) = delete;
    LockFreeBuffer& operator=(const LockFreeBuffer&) = delete;

    // Owner only, before any thread publishes or takes: both slots := initial.
    void init_slots(const T& initial)
    {
        _slots[0] = initial;
        _slots[1] = initial;
    }

    // Publisher: the next take gets a copy of source (or of a later publication).
    void publish(const T& source)
    {
        _busy.store(true, std::memory_order_seq_cst);
        int write = _write.load(std::memory_order_relaxed);
        if (_other.load(std::memory_order_seq_cst) == write && _taken.load(std::memory_order_seq_cst))
        {
            write = 1 - write;
            _write.store(write, std::memory_order_seq_cst);
            _taken.store(false, std::memory_order_seq_cst);
        }
        _slots[write] = source;
        _busy.store(false, std::memory_order_seq_cst);
    }

    // Consumer: a publication has not been taken yet.
    bool is_pending() const
    {
        return _take_missed || _write.load(std::memory_order_acquire) != _other.load(std::memory_order_relaxed);
    }

    // Consumer: copies the newest publication into target, or answers false
    // (target untouched) when a publication got in the way.
    bool take(T& target)
    {
        const int claimed = _write.load(std::memory_order_seq_cst);
        _other.store(claimed, std::memory_order_seq_cst);
        _taken.store(true, std::memory_order_seq_cst);
        const bool intact = !_busy.load(std::memory_order_seq_cst) && _taken.load(std::memory_order_seq_cst) &&
                            _write.load(std::memory_order_seq_cst) == claimed;
        _take_missed = !intact;
        if (intact)
        {
            target = _slots[claimed];
        }
        return intact;
    }

private:
    T _slots[2];
    std::atomic<int> _write{0};
    std::atomic<int> _other{1};
    std::atomic<bool> _taken{false};
    std::atomic<bool> _busy{false};
    // Consumer's own: its last take lost the race, so take again.
    bool _take_missed = false;
};

}  // namespace basic
