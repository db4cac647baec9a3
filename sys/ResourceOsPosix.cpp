#include "sys/ResourceOs.h"

#include "sys/ResourceTable.h"

#include <cstdio>

namespace sys
{

// Without a resource section, the embedded data comes from the tables that the
// linked-in resource objects register.
const std::uint8_t* find_os_resource(const char* type, const char* name, std::size_t& size)
{
    const ResourceTable::Entry* entry = ResourceTable::find(type, name);
    if (entry == nullptr)
    {
        return nullptr;
    }
    size = entry->size;
    return entry->data;
}

void write_os_debug(const char* text)
{
    std::fputs(text, stderr);
}

}  // namespace sys
