#pragma once

#include <cstddef>
#include <cstdint>

namespace sys
{

// A table of embedded resources for platforms without a resource section. Each
// table is a static object of the program that holds the data; it registers
// itself on construction and unregisters on destruction, so a program that
// links no table still links and simply finds nothing. Tables are registered
// and unregistered while no other thread looks resources up (static
// initialisation, or a test's own thread).
class ResourceTable
{
public:
    struct Entry
    {
        const char* type;
        const char* name;
        const std::uint8_t* data;
        std::size_t size;
    };

    ResourceTable(const Entry* entries, std::size_t count);
    ~ResourceTable();
    ResourceTable(const ResourceTable&) = delete;
    ResourceTable& operator=(const ResourceTable&) = delete;

    // The first entry, in the most recently registered table first, whose type
    // and name match without regard to case; null when there is none.
    static const Entry* find(const char* type, const char* name);

private:
    const Entry* find_here(const char* type, const char* name) const;

    const Entry* _entries;
    std::size_t _count;
    ResourceTable* _next;
};

}  // namespace sys
