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

// One step as written; a move's count of moves is in amount.
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

// Adds the step, a move as its single moves from the last point (the origin
// before any point was given).
void add_step(MouseScript::Step step, std::vector<MouseScript::Step>& steps)
{
    if (step.action != Action::move)
    {
        steps.push_back(step);
        return;
    }
    int from_x = 0;
    int from_y = 0;
    for (auto it = steps.rbegin(); it != steps.rend(); ++it)
    {
        if (it->action != Action::wait)
        {
            from_x = it->x;
            from_y = it->y;
            break;
        }
    }
    const int moves = step.amount;
    for (int i = 1; i <= moves; ++i)
    {
        steps.push_back(MouseScript::Step{Action::move, from_x + (step.x - from_x) * i / moves,
                                          from_y + (step.y - from_y) * i / moves, 0});
    }
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
            add_step(parse_step(step), steps);
        }
        step.clear();
    }
    return steps;
}

}  // namespace vsthost
