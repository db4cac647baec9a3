#pragma once

namespace lumo
{

// Whole texts equal without regard to ASCII letter case; null equals nothing.
bool equals_ignoring_case(const char* a, const char* b);

}  // namespace lumo
