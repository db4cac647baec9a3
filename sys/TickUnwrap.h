#pragma once

#include <atomic>
#include <cstdint>

namespace sys
{

// The operating system's millisecond tick is 32 bits wide and wraps after
// 49.7 days of uptime. Hold times and the daily break compare readings taken
// far apart, so the rest of the system sees the tick extended to 64 bits: the
// same value as the raw tick until the first wrap, then counting on instead
// of jumping back by 2^32 ms.
//
// Any thread may call extend() at any time without locks (the audio thread
// does). A wrap is recognised as long as two readings are less than 24.8 days
// (2^31 ms) apart, which the engine's per-block reading guarantees while the
// plug-in runs.
class TickUnwrap
{
public:
    std::uint64_t extend(std::uint32_t tick);
    // Forgets the readings so far: the next tick is taken as it stands.
    void restart();

private:
    static constexpr std::uint64_t unset = ~std::uint64_t{0};
    // The audio thread extends ticks too, so this must never hide a lock.
    static_assert(std::atomic<std::uint64_t>::is_always_lock_free);

    std::atomic<std::uint64_t> _latest{unset};
};

}  // namespace sys
