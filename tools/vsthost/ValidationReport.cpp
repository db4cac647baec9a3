#include "ValidationReport.h"

namespace vsthost
{

void ValidationReport::pass(const std::string& check, const std::string& detail)
{
    ++_passed;
    print("PASS", check, detail);
}

void ValidationReport::fail(const std::string& check, const std::string& detail)
{
    ++_failed;
    print("FAIL", check, detail);
}

void ValidationReport::skip(const std::string& check, const std::string& note)
{
    print("SKIP", check, note);
}

void ValidationReport::expect(bool ok, const std::string& check, const std::string& detail)
{
    if (ok)
    {
        pass(check, detail);
    }
    else
    {
        fail(check, detail);
    }
}

void ValidationReport::print_summary()
{
    _out << _passed << " passed, " << _failed << " failed" << std::endl;
}

void ValidationReport::print(const char* verdict, const std::string& check, const std::string& detail)
{
    // Flushed per line: a plug-in that crashes the process leaves the last
    // check it was in on the screen.
    _out << verdict << "  " << check << (detail.empty() ? "" : ": ") << detail << std::endl;
}

}  // namespace vsthost
