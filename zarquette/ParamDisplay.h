#pragma once

namespace zarquette
{

// The display rule of every parameter of the effect: format with a printf
// format, keep at most the first 15 characters, then copy into the caller's
// buffer of the given capacity.
void format_param_display(char* text, int capacity, const char* format, double value);

// Reads a number the way the parameters' text entry does ("%lf"). false for text
// that is no number, and for NaN, which no parameter can take.
bool parse_param_number(const char* text, double& value);

}  // namespace zarquette
