#include "ChildReportWriter.h"

#include "ValidationReport.h"

#include <cstdio>

namespace vsthost
{

void ChildReportWriter::on_step(const std::string& step)
{
    _sink("step\t" + escape(step) + "\n");
}

void ChildReportWriter::on_opened()
{
    _sink("opened\n");
}

void ChildReportWriter::on_check(const CheckRecord& record)
{
    char seconds[32];
    std::snprintf(seconds, sizeof seconds, "%.6f", record.seconds);
    _sink(std::string("check\t") + get_verdict_text(record.verdict) + "\t" + escape(record.name) + "\t"
          + escape(record.detail) + "\t" + seconds + "\n");
}

void ChildReportWriter::on_done()
{
    _sink("done\n");
}

std::string ChildReportWriter::escape(const std::string& text)
{
    std::string out;
    out.reserve(text.size());
    for (const char c : text)
    {
        switch (c)
        {
        case '\\':
            out += "\\\\";
            break;
        case '\t':
            out += "\\t";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        default:
            out += c;
        }
    }
    return out;
}

}  // namespace vsthost
