#include "ChildReportReader.h"

#include "ValidationReport.h"

#include <cstdlib>
#include <vector>

namespace vsthost
{

namespace
{

// The fields of one line, escapes undone.
std::vector<std::string> split_fields(const std::string& line)
{
    std::vector<std::string> fields(1);
    for (std::size_t i = 0; i < line.size(); ++i)
    {
        const char c = line[i];
        if (c == '\t')
        {
            fields.emplace_back();
        }
        else if (c == '\\' && i + 1 < line.size())
        {
            const char e = line[++i];
            fields.back() += e == 't' ? '\t' : (e == 'n' ? '\n' : (e == 'r' ? '\r' : e));
        }
        else
        {
            fields.back() += c;
        }
    }
    return fields;
}

bool parse_verdict(const std::string& text, Verdict& verdict)
{
    for (const Verdict v : {Verdict::pass, Verdict::fail, Verdict::skip})
    {
        if (text == get_verdict_text(v))
        {
            verdict = v;
            return true;
        }
    }
    return false;
}

}  // namespace

void ChildReportReader::feed(const std::string& bytes)
{
    _pending += bytes;
    std::size_t start = 0;
    for (std::size_t end = _pending.find('\n'); end != std::string::npos; end = _pending.find('\n', start))
    {
        take(_pending.substr(start, end - start));
        start = end + 1;
    }
    // A line cut short by the child's death stays here, unread.
    _pending.erase(0, start);
}

void ChildReportReader::take(const std::string& line)
{
    const std::vector<std::string> f = split_fields(line);
    CheckRecord record{_group, "", Verdict::pass, "", 0.0};
    if (f[0] == "step" && f.size() == 2)
    {
        _step = f[1];
        _check_in_step.clear();
    }
    else if (f[0] == "opened")
    {
        _opened = true;
    }
    else if (f[0] == "done")
    {
        _done = true;
    }
    else if (f[0] == "check" && f.size() == 5 && parse_verdict(f[1], record.verdict))
    {
        record.name = f[2];
        record.detail = f[3];
        record.seconds = std::strtod(f[4].c_str(), nullptr);
        _check_in_step = record.name;
        _report.add(record);
    }
    // Anything else is not from a child of this program: ignored.
}

}  // namespace vsthost
