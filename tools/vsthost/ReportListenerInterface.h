#pragma once

#include <string>

namespace vsthost
{

struct CheckRecord;

// Follows a validation as it happens: a group's child process hands every
// step and result on to the validator that started it, so that what the
// child got through survives the child.
class ReportListenerInterface
{
public:
    virtual ~ReportListenerInterface() = default;
    // What the validator is about to do; the last one names where a crash happened.
    virtual void on_step(const std::string& step) = 0;
    // The plug-in loaded and its first instance opened.
    virtual void on_opened() = 0;
    virtual void on_check(const CheckRecord& record) = 0;
};

}  // namespace vsthost
