#include "MouseScript.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace vsthost
{

namespace
{

using Action = MouseScript::Action;

struct Syntax
{
    const char* word;
    Action action;
    int min_numbers;
    int max_numbers;
};

const Syntax syntax[] = {
    {"down", Action::down, 2, 2},   {"up", Action::up, 2, 2},       {"rdown", Action::rdown, 2, 2},
    {"rup", Action::rup, 2, 2},     {"click", Action::click, 2, 2}, {"dblclick", Action::dblclick, 2, 2},
    {"move", Action::move, 2, 3},   {"wheel", Action::wheel, 3, 3}, {"wait", Action::wait, 1, 1},
};

[[noreturn]] void fail(const std::string& step, const std::string& why)
{
    throw std::invalid_argument("mouse step '" + step + "': " + why);
}

const Syntax& find_syntax(const std::string& step, const std::string& word)
{
    for (const Syntax& s : syntax)
    {
        if (word == s.word)
        {
            return s;
        }
    }
    fail(step, "unknown action '" + word + "'");
}

int parse_int(const std::string& step, const std::string& word)
{
    char* end = nullptr;
    const long v = std::strtol(word.c_str(), &end, 10);
    if (word.empty() || *end != 0 || v < -32768 || v > 999999)
    {
        fail(step, "'" + word + "' is not a whole number in range");
    }
    return static_cast<int>(v);
}

MouseScript::Step parse_step(const std::string& step)
{
    std::istringstream words(step);
    std::string word;
    words >> word;
    const Syntax& s = find_syntax(step, word);
    std::vector<int> numbers;
    while (words >> word)
    {
        numbers.push_back(parse_int(step, word));
    }
    const int count = static_cast<int>(numbers.size());
    if (count < s.min_numbers || count > s.max_numbers)
    {
        fail(step, "wrong count of numbers");
    }
    MouseScript::Step out;
    out.action = s.action;
    if (s.action == Action::wait)
    {
        out.amount = numbers[0];
        if (out.amount < 0 || out.amount > MouseScript::max_wait_ms)
        {
            fail(step, "the wait is out of range");
        }
        return out;
    }
    out.x = numbers[0];
    out.y = numbers[1];
    out.amount = count == 3 ? numbers[2] : 1;
    if (s.action == Action::move && (out.amount < 1 || out.amount > MouseScript::max_moves))
    {
        fail(step, "the count of moves is out of range");
    }
    return out;
}

}  // namespace

std::vector<MouseScript::Step> MouseScript::parse(const std::string& text)
{
    std::vector<Step> steps;
    std::string step;
    for (std::size_t i = 0; i <= text.size(); ++i)
    {
        const bool end = i == text.size() || text[i] == ';' || text[i] == '\n';
        if (!end)
        {
            step += text[i];
            continue;
        }
        if (step.find_first_not_of(" \t\r") != std::string::npos)
        {
            steps.push_back(parse_step(step));
        }
        step.clear();
    }
    return steps;
}

}  // namespace vsthost
