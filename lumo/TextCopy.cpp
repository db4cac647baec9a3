#include "lumo/TextCopy.h"

namespace lumo
{

void copy_text(char* dst, int capacity, const char* src)
{
    if (dst == nullptr || capacity <= 0)
    {
        return;
    }
    int n = 0;
    if (src != nullptr)
    {
        for (; n < capacity - 1 && src[n] != '\0'; ++n)
        {
            dst[n] = src[n];
        }
    }
    dst[n] = '\0';
}

}  // namespace lumo
