#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

namespace lumo
{

// The host's open automation edit gestures (touches, in LV2's words), one per
// parameter at most, in the order they were opened. Parameters are reported
// from the editor, host and audio threads while another thread may close
// gestures (the VST 2 adapter's background thread), so the queue is lock-free
// and never allocates after construction: each parameter has a slot holding
// the sequence number of its open gesture (0 when none), and a parameter can
// only be opened by the thread that wins its no-edit-open flag.
class GestureQueue
{
public:
    explicit GestureQueue(int nbr_params);

    int get_size() const { return _nbr_params; }

    // Claims the gesture of index: true for the one caller that must send the
    // host's begin-edit and then call commit_open.
    bool try_open(int index);
    // Makes an opened gesture visible to the walk, after begin-edit was sent.
    void commit_open(int index);

    // The oldest open gesture for which can_close answers true, closed and
    // returned; -1 when there is none. The caller sends the end-edit.
    template <class CanClose>
    int close_first(CanClose can_close);

    // Opens the gesture of index unless it is open: begin() tells the host.
    template <class Begin>
    void open(int index, Begin begin);
    // Closes every gesture for which can_close answers true, oldest first:
    // end(index) tells the host of each.
    template <class CanClose, class End>
    void close_all(CanClose can_close, End end);

    bool is_open(int index) const;

private:
    int _nbr_params;
    std::unique_ptr<std::atomic<bool>[]> _no_edit_open;
    std::unique_ptr<std::atomic<std::uint64_t>[]> _opened_at;
    std::atomic<std::uint64_t> _next_sequence{1};
};

template <class CanClose>
int GestureQueue::close_first(CanClose can_close)
{
    int best = -1;
    std::uint64_t best_seq = 0;
    for (int i = 0; i < _nbr_params; ++i)
    {
        const std::uint64_t seq = _opened_at[i].load(std::memory_order_acquire);
        if (seq != 0 && (best < 0 || seq < best_seq) && can_close(i))
        {
            best = i;
            best_seq = seq;
        }
    }
    if (best >= 0)
    {
        _opened_at[best].store(0, std::memory_order_relaxed);
        _no_edit_open[best].store(true, std::memory_order_release);
    }
    return best;
}

template <class Begin>
void GestureQueue::open(int index, Begin begin)
{
    if (try_open(index))
    {
        begin();
        commit_open(index);
    }
}

template <class CanClose, class End>
void GestureQueue::close_all(CanClose can_close, End end)
{
    for (int index; (index = close_first(can_close)) >= 0;)
    {
        end(index);
    }
}

}  // namespace lumo
