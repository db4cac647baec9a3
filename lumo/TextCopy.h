#pragma once

namespace lumo
{

// Copies src into a buffer of capacity bytes: at most capacity - 1 characters and
// always a terminating zero. A null source gives the empty text; a buffer of
// capacity 0 or below is left alone.
void copy_text(char* dst, int capacity, const char* src);

}  // namespace lumo
