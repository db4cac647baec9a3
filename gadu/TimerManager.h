#pragma once

#include "gadu/TimerMessage.h"

#include <cstdint>
#include <limits>
#include <map>
#include <set>

namespace gadu
{

// The timers of one window. The window runs the service on pointer motion, on
// paint and from its own 2 ms platform timer, so a timer fires at the first run
// at least its period after its last firing, at most once per run.
class TimerManager
{
public:
    struct TimerData
    {
        MessageHandlerInterface* handler = nullptr;
        float period = 0.0f;
        double last_fired = 0.0;
        bool removed = false;
    };

    // 0, or -1 when the id is already present.
    std::int32_t add(const SetTimer& message);
    // 0 after marking the timer removed, or -1 for an unknown id. A removed
    // timer never fires again, not even later in the run that removed it.
    std::int32_t remove(const ClearTimer& message);
    // now: the toolkit's clock in seconds.
    void service(double now);
    void clear();

    bool is_active(std::uint32_t timer_id) const;

    // Runs closer together than this fire nothing.
    static constexpr double kMinInterval = 0.002;
    // The clock counts whole milliseconds times 0.001 and periods are floats,
    // so an interval of exactly 2 ms or of exactly one period can come out a
    // hair short; a microsecond of slack absorbs that and is far below any
    // interval the clock can tell apart.
    static constexpr double kSlack = 1e-6;

private:
    void drop_removed();

    std::map<std::uint32_t, TimerData> _timers;
    std::set<std::uint32_t> _removed;
    // So that the very first run is never too close to a previous one.
    double _last_run = std::numeric_limits<double>::lowest();
    // A handler that clears timers while the map is walked only marks them.
    bool _servicing = false;
};

}  // namespace gadu
