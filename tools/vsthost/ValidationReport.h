#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

class ReportListenerInterface;

enum class Verdict
{
    pass,
    fail,
    skip,
};

// "PASS", "FAIL" or "SKIP".
const char* get_verdict_text(Verdict verdict);

// One check as the report keeps it: the group it ran in, its name, the
// verdict, what was seen and how long it took (seconds since the check
// before it in the group ended, or since the group began).
struct CheckRecord
{
    std::string group;
    std::string name;
    Verdict verdict = Verdict::pass;
    std::string detail;
    double seconds = 0.0;
};

// The validator's results: one line per check ("PASS", "FAIL" or "SKIP", the
// check's name and what was seen), printed as it comes when there is an
// output, kept for the machine-readable report, and counted for the closing
// line.
class ValidationReport
{
public:
    // Without an output the report only keeps and counts.
    explicit ValidationReport(std::ostream* out) : _out(out) {}

    // Not owned; null detaches.
    void set_listener(ReportListenerInterface* listener) { _listener = listener; }

    // Checks from here on belong to this group; their clock starts now.
    void begin_group(const std::string& group);
    void step(const std::string& what);
    void opened();

    void pass(const std::string& check, const std::string& detail);
    void fail(const std::string& check, const std::string& detail);
    void skip(const std::string& check, const std::string& note);
    // Passes when ok, fails otherwise, with the same detail.
    void expect(bool ok, const std::string& check, const std::string& detail);
    // A check made elsewhere (in a child process), taken as it is.
    void add(const CheckRecord& record);
    // "N passed, N failed"
    void print_summary();

    int get_failed() const { return _failed; }
    int get_passed() const { return _passed; }
    const std::vector<CheckRecord>& get_records() const { return _records; }

private:
    void record(Verdict verdict, const std::string& check, const std::string& detail);

    std::ostream* _out;
    ReportListenerInterface* _listener = nullptr;
    std::string _group;
    std::chrono::steady_clock::time_point _since = std::chrono::steady_clock::now();
    std::vector<CheckRecord> _records;
    int _passed = 0;
    int _failed = 0;
};

}  // namespace vsthost
