#include "zarquette/Pattern.h"

#include <algorithm>

namespace zarquette
{
namespace
{

std::size_t to_index(int i)
{
    return static_cast<std::size_t>(std::clamp(i, 0, Pattern::kMaxLength - 1));
}

}  // namespace

void Pattern::set_length(int n)
{
    _length = std::clamp(n, 1, kMaxLength);
}

Pattern::Step& Pattern::use_step(int i)
{
    return _steps[to_index(i)];
}

const Pattern::Step& Pattern::use_step(int i) const
{
    return _steps[to_index(i)];
}

}  // namespace zarquette
