#pragma once

#include <string>

namespace vsthost
{

class ValidationReport;

// The parent's side of a check group run in a child process: takes what the
// child wrote, in pieces of any size, and hands each check to the report
// under the group's name. It remembers where the child was, so that a child
// that dies or hangs can be reported with the step it was in.
class ChildReportReader
{
public:
    ChildReportReader(ValidationReport& report, std::string group) : _report(report), _group(std::move(group)) {}

    void feed(const std::string& bytes);

    // The step the child last announced ("" before the first).
    const std::string& get_step() const { return _step; }
    // The last check reported since that step began ("" when none).
    const std::string& get_check_in_step() const { return _check_in_step; }
    bool was_opened() const { return _opened; }
    bool is_done() const { return _done; }

private:
    void take(const std::string& line);

    ValidationReport& _report;
    std::string _group;
    std::string _pending;
    std::string _step;
    std::string _check_in_step;
    bool _opened = false;
    bool _done = false;
};

}  // namespace vsthost
