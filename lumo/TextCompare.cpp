#include "lumo/TextCompare.h"

#include <cctype>

namespace lumo
{

bool equals_ignoring_case(const char* a, const char* b)
{
    if (a == nullptr || b == nullptr)
    {
        return false;
    }
    for (; *a != '\0' && *b != '\0'; ++a, ++b)
    {
        if (std::tolower(static_cast<unsigned char>(*a)) != std::tolower(static_cast<unsigned char>(*b)))
        {
            return false;
        }
    }
    return *a == *b;
}

}  // namespace lumo
