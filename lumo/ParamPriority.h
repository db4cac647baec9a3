#pragma once

#include <atomic>

namespace lumo
{

// Priority levels of the sources that change parameters; higher wins.
namespace priority_level
{
constexpr int program = 200;
constexpr int gui_drag = 200;
constexpr int midi = 125;
constexpr int host_automation = 100;
constexpr int gui_tail = 50;
constexpr int gui_reset = 1;
constexpr int gesture_end_test = 1;
}  // namespace priority_level

// Which source currently holds one parameter. A source of a lower level is
// refused while the holder's last change is at most hold_time old; equal or
// higher levels always pass. Touched from several threads: the fields are
// atomics, and a race between two takers simply lets one of them win.
class ParamPriority
{
public:
    ParamPriority() = default;
    ParamPriority(const ParamPriority& other);
    ParamPriority& operator=(const ParamPriority& other);
    virtual ~ParamPriority() = default;

    bool is_free(int level, double now) const;
    // The test; when allowed, the source becomes the holder as of now.
    bool take(int level, double now);
    // Lets go when level is the holder's; anything else leaves the hold running.
    void release(int level);

    double get_last_time() const { return _last_time.load(std::memory_order_relaxed); }
    double get_hold_time() const { return _hold_time; }
    int get_level() const { return _level.load(std::memory_order_relaxed); }

private:
    std::atomic<double> _last_time{0.0};
    double _hold_time = 0.5;
    std::atomic<int> _level{0};
};

}  // namespace lumo
