#include "ValidationReport.h"

#include "ReportListenerInterface.h"

namespace vsthost
{

const char* get_verdict_text(Verdict verdict)
{
    switch (verdict)
    {
    case Verdict::pass:
        return "PASS";
    case Verdict::fail:
        return "FAIL";
    case Verdict::skip:
        break;
    }
    return "SKIP";
}

void ValidationReport::begin_group(const std::string& group)
{
    _group = group;
    _since = std::chrono::steady_clock::now();
}

void ValidationReport::step(const std::string& what)
{
    if (_listener != nullptr)
    {
        _listener->on_step(what);
    }
}

void ValidationReport::opened()
{
    if (_listener != nullptr)
    {
        _listener->on_opened();
    }
}

void ValidationReport::pass(const std::string& check, const std::string& detail)
{
    record(Verdict::pass, check, detail);
}

void ValidationReport::fail(const std::string& check, const std::string& detail)
{
    record(Verdict::fail, check, detail);
}

void ValidationReport::skip(const std::string& check, const std::string& note)
{
    record(Verdict::skip, check, note);
}

void ValidationReport::expect(bool ok, const std::string& check, const std::string& detail)
{
    record(ok ? Verdict::pass : Verdict::fail, check, detail);
}

void ValidationReport::record(Verdict verdict, const std::string& check, const std::string& detail)
{
    const auto now = std::chrono::steady_clock::now();
    const std::chrono::duration<double> took = now - _since;
    _since = now;
    add({_group, check, verdict, detail, took.count()});
}

void ValidationReport::add(const CheckRecord& record)
{
    _records.push_back(record);
    _passed += record.verdict == Verdict::pass ? 1 : 0;
    _failed += record.verdict == Verdict::fail ? 1 : 0;
    if (_listener != nullptr)
    {
        _listener->on_check(record);
    }
    if (_out != nullptr)
    {
        // Flushed per line, so the screen is never behind a plug-in that hangs.
        *_out << get_verdict_text(record.verdict) << "  " << record.name << (record.detail.empty() ? "" : ": ")
              << record.detail << std::endl;
    }
}

void ValidationReport::print_summary()
{
    if (_out != nullptr)
    {
        *_out << _passed << " passed, " << _failed << " failed" << std::endl;
    }
}

}  // namespace vsthost
