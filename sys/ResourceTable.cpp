#include "sys/ResourceTable.h"

namespace sys
{

namespace
{

// Constant-initialised, so tables may register from any static constructor.
ResourceTable* first_table = nullptr;

char to_upper(char c)
{
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

// Resource names and types compare like Windows compares them: ASCII letters
// without regard to case, independent of the locale.
bool same_name(const char* a, const char* b)
{
    for (; *a != '\0' && *b != '\0'; ++a, ++b)
    {
        if (to_upper(*a) != to_upper(*b))
        {
            return false;
        }
    }
    return *a == *b;
}

}  // namespace

ResourceTable::ResourceTable(const Entry* entries, std::size_t count)
    : _entries(entries), _count(count), _next(first_table)
{
    first_table = this;
}

ResourceTable::~ResourceTable()
{
    for (ResourceTable** link = &first_table; *link != nullptr; link = &(*link)->_next)
    {
        if (*link == this)
        {
            *link = _next;
            return;
        }
    }
}

const ResourceTable::Entry* ResourceTable::find(const char* type, const char* name)
{
    if (type == nullptr || name == nullptr)
    {
        return nullptr;
    }
    for (const ResourceTable* table = first_table; table != nullptr; table = table->_next)
    {
        if (const Entry* entry = table->find_here(type, name))
        {
            return entry;
        }
    }
    return nullptr;
}

const ResourceTable::Entry* ResourceTable::find_here(const char* type, const char* name) const
{
    for (std::size_t i = 0; i < _count; ++i)
    {
        if (same_name(_entries[i].type, type) && same_name(_entries[i].name, name))
        {
            return &_entries[i];
        }
    }
    return nullptr;
}

}  // namespace sys
