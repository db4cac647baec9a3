#pragma once

#include "ReportListenerInterface.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

namespace vsthost
{

class ValidationReport;

// Hands the checks of check groups that run at once, each in its own thread,
// to one report in group order: the checks of the first group not yet
// finished as they come, those of later groups once every group before them
// has finished. A group in which the plug-in did not load cuts the run
// short: what later groups report is dropped, as they would not have run.
class OrderedGroupReport
{
public:
    OrderedGroupReport(ValidationReport& report, std::size_t groups);

    // Where group i's checks go, to be set on that group's own report.
    ReportListenerInterface& use_listener(std::size_t group) { return *_listeners[group]; }
    // Group i has ended; opened: the plug-in loaded in it.
    void finish(std::size_t group, bool opened);
    // Whether group i is to run at all.
    bool is_wanted(std::size_t group);

private:
    class Listener : public ReportListenerInterface
    {
    public:
        Listener(OrderedGroupReport& owner, std::size_t group) : _owner(owner), _group(group) {}
        void on_step(const std::string&) override {}
        void on_opened() override {}
        void on_check(const CheckRecord& record) override { _owner.take(_group, record); }

    private:
        OrderedGroupReport& _owner;
        std::size_t _group;
    };

    void take(std::size_t group, const CheckRecord& record);

    std::mutex _mutex;
    ValidationReport& _report;
    std::vector<std::unique_ptr<Listener>> _listeners;
    std::vector<std::vector<CheckRecord>> _waiting;
    std::vector<bool> _finished;
    // The first group not yet finished: its checks go to the report at once.
    std::size_t _front = 0;
    // The first group in which the plug-in did not load.
    std::size_t _cut = std::numeric_limits<std::size_t>::max();
};

}  // namespace vsthost
