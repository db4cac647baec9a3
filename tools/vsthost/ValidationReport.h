#pragma once

#include <ostream>
#include <string>

namespace vsthost
{

// The validator's output: one line per check ("PASS", "FAIL" or "SKIP", the
// check's name and what was seen) and the counts for the closing line.
class ValidationReport
{
public:
    explicit ValidationReport(std::ostream& out) : _out(out) {}

    void pass(const std::string& check, const std::string& detail);
    void fail(const std::string& check, const std::string& detail);
    void skip(const std::string& check, const std::string& note);
    // Passes when ok, fails otherwise, with the same detail.
    void expect(bool ok, const std::string& check, const std::string& detail);
    // "N passed, N failed"
    void print_summary();

    int get_failed() const { return _failed; }
    int get_passed() const { return _passed; }

private:
    void print(const char* verdict, const std::string& check, const std::string& detail);

    std::ostream& _out;
    int _passed = 0;
    int _failed = 0;
};

}  // namespace vsthost
