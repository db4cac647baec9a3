#include "AutomationCsv.h"

#include <iomanip>

namespace vsthost
{

AutomationCsv::AutomationCsv(std::ostream& out, const std::vector<std::string>& names) : _out(out)
{
    _out << "frame";
    for (const std::string& name : names)
    {
        _out << ',' << quote(name);
    }
    _out << '\n';
}

void AutomationCsv::add_row(std::uint64_t frame, const std::vector<float>& values)
{
    _out << frame;
    for (const float v : values)
    {
        // Nine significant digits give every 32-bit float back exactly.
        _out << ',' << std::setprecision(9) << v;
    }
    _out << '\n';
}

std::string AutomationCsv::quote(const std::string& field)
{
    if (field.find_first_of(",\"\r\n") == std::string::npos)
    {
        return field;
    }
    std::string quoted = "\"";
    for (const char c : field)
    {
        quoted += c;
        if (c == '"')
        {
            quoted += '"';
        }
    }
    return quoted + "\"";
}

}  // namespace vsthost
