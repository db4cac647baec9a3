#pragma once

namespace recgen
{

constexpr double pi = 3.14159265358979323846;

}  // namespace recgen
