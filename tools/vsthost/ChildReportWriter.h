#pragma once

#include "ReportListenerInterface.h"

#include <functional>
#include <string>

namespace vsthost
{

// The child's side of a check group run in its own process: every step and
// check goes to the parent as one line the moment it happens, so that a
// crash loses nothing the child got through. ChildReportReader reads the
// lines.
class ChildReportWriter : public ReportListenerInterface
{
public:
    using Sink = std::function<void(const std::string& line)>;

    explicit ChildReportWriter(Sink sink) : _sink(std::move(sink)) {}

    void on_step(const std::string& step) override;
    void on_opened() override;
    void on_check(const CheckRecord& record) override;
    // The group ended and the plug-in is unloaded: what follows is the process's own exit.
    void on_done();

    // Tabs, line ends and backslashes as escapes, so that any text a plug-in
    // gives stays one field of one line.
    static std::string escape(const std::string& text);

private:
    Sink _sink;
};

}  // namespace vsthost
