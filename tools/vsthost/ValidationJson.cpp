#include "ValidationJson.h"

#include "ValidationOptions.h"

#include <algorithm>
#include <cstdio>

namespace vsthost
{

namespace
{

// The length of the well-formed UTF-8 sequence at text[at], 0 when there is none.
std::size_t get_utf8_length(const std::string& text, std::size_t at)
{
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(at);
    const std::size_t length = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || at + length > text.size())
    {
        return 0;
    }
    for (std::size_t i = 1; i < length; ++i)
    {
        if ((byte(at + i) & 0xC0) != 0x80)
        {
            return 0;
        }
    }
    const unsigned char second = byte(at + 1);
    // Overlong forms, UTF-16 surrogates and code points above U+10FFFF.
    const bool bad = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0)
                     || (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
    return bad ? 0 : length;
}

std::string escape_byte(unsigned char c)
{
    char text[8];
    std::snprintf(text, sizeof text, "\\u%04x", c);
    return text;
}

std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6f", value);
    return text;
}

void write_group(std::ostream& out, const GroupOutcome& g)
{
    out << "        {\"name\": " << ValidationJson::quote(g.group)
        << ", \"outcome\": " << ValidationJson::quote(get_outcome_text(g.kind))
        << ", \"detail\": " << ValidationJson::quote(g.detail) << ", \"duration\": " << number(g.seconds) << "}";
}

const char* get_verdict_word(Verdict verdict)
{
    switch (verdict)
    {
    case Verdict::pass:
        return "pass";
    case Verdict::fail:
        return "fail";
    case Verdict::skip:
        break;
    }
    return "skip";
}

void write_check(std::ostream& out, const CheckRecord& c)
{
    const char* verdict = get_verdict_word(c.verdict);
    out << "        {\"group\": " << ValidationJson::quote(c.group) << ", \"name\": " << ValidationJson::quote(c.name)
        << ", \"result\": " << ValidationJson::quote(verdict) << ", \"detail\": " << ValidationJson::quote(c.detail)
        << ", \"duration\": " << number(c.seconds) << "}";
}

template <typename T, typename Write>
void write_list(std::ostream& out, const std::vector<T>& items, Write write)
{
    out << "[";
    for (std::size_t i = 0; i < items.size(); ++i)
    {
        out << (i == 0 ? "\n" : ",\n");
        write(out, items[i]);
    }
    out << (items.empty() ? "]" : "\n      ]");
}

void write_plugin(std::ostream& out, const PluginResult& p)
{
    out << "    {\n      \"path\": " << ValidationJson::quote(p.path)
        << ",\n      \"result\": " << ValidationJson::quote(get_result_text(p.kind))
        << ",\n      \"passed\": " << p.passed << ",\n      \"failed\": " << p.failed
        << ",\n      \"duration\": " << number(p.seconds) << ",\n      \"groups\": ";
    write_list(out, p.groups, write_group);
    out << ",\n      \"checks\": ";
    write_list(out, p.checks, write_check);
    out << "\n    }";
}

}  // namespace

std::string ValidationJson::quote(const std::string& text)
{
    std::string out = "\"";
    for (std::size_t i = 0; i < text.size();)
    {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '"' || c == '\\')
        {
            out += '\\';
            out += static_cast<char>(c);
        }
        else if (c == '\n')
        {
            out += "\\n";
        }
        else if (c == '\t')
        {
            out += "\\t";
        }
        else if (c < 0x20 || c == 0x7F)
        {
            out += escape_byte(c);
        }
        else if (c >= 0x80)
        {
            const std::size_t length = get_utf8_length(text, i);
            out += length > 0 ? text.substr(i, length) : escape_byte(c);
            i += length > 0 ? length : 1;
            continue;
        }
        else
        {
            out += static_cast<char>(c);
        }
        ++i;
    }
    return out + "\"";
}

std::ostream& ValidationJson::write(std::ostream& out, const ValidationOptions& options,
                                   const std::vector<PluginResult>& results)
{
    const auto count = [&](PluginResult::Kind kind) {
        return std::count_if(results.begin(), results.end(), [&](const PluginResult& r) { return r.kind == kind; });
    };
    out << "{\n  \"level\": " << options.level << ",\n  \"seed\": " << options.seed
        << ",\n  \"repeats\": " << options.repeats << ",\n  \"isolation\": \""
        << (options.in_process ? "in process" : "process per group") << "\",\n  \"jobs\": "
        << (options.in_process ? 1 : options.jobs) << ",\n  \"timeout\": "
        << number(options.timeout_seconds) << ",\n  \"passed\": " << count(PluginResult::Kind::passed)
        << ",\n  \"failed\": " << count(PluginResult::Kind::failed) << ",\n  \"crashed\": "
        << count(PluginResult::Kind::crashed) << ",\n  \"not_plugins\": " << count(PluginResult::Kind::not_a_plugin)
        << ",\n  \"plugins\": [";
    for (std::size_t i = 0; i < results.size(); ++i)
    {
        out << (i == 0 ? "\n" : ",\n");
        write_plugin(out, results[i]);
    }
    return out << (results.empty() ? "]\n}\n" : "\n  ]\n}\n");
}

}  // namespace vsthost
