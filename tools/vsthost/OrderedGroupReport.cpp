#include "OrderedGroupReport.h"

#include "ValidationReport.h"

namespace vsthost
{

OrderedGroupReport::OrderedGroupReport(ValidationReport& report, std::size_t groups)
    : _report(report), _waiting(groups), _finished(groups, false)
{
    for (std::size_t g = 0; g < groups; ++g)
    {
        _listeners.push_back(std::make_unique<Listener>(*this, g));
    }
}

void OrderedGroupReport::take(std::size_t group, const CheckRecord& record)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    if (group > _cut)
    {
        return;
    }
    if (group == _front)
    {
        _report.add(record);
    }
    else
    {
        _waiting[group].push_back(record);
    }
}

void OrderedGroupReport::finish(std::size_t group, bool opened)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    _finished[group] = true;
    if (!opened && group < _cut)
    {
        _cut = group;
    }
    while (_front < _finished.size() && _finished[_front])
    {
        ++_front;
        if (_front < _finished.size() && _front <= _cut)
        {
            for (const CheckRecord& record : _waiting[_front])
            {
                _report.add(record);
            }
            _waiting[_front].clear();
        }
    }
}

bool OrderedGroupReport::is_wanted(std::size_t group)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    return group <= _cut;
}

}  // namespace vsthost
