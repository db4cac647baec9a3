#include "sys/Resource.h"

#include "sys/ResourceOs.h"

namespace sys
{

namespace
{

const char* printable(const char* text)
{
    return text != nullptr ? text : "";
}

void report_missing(const char* type, const char* name)
{
    write_os_debug("sys::get_resource: Error: couldn't load ressource. Name : ");
    write_os_debug(printable(name));
    write_os_debug(", Type : ");
    write_os_debug(printable(type));
    write_os_debug("\n");
}

}  // namespace

const std::uint8_t* get_resource(const char* type, const char* name, std::size_t* size)
{
    std::size_t found_size = 0;
    const std::uint8_t* data = nullptr;
    if (type != nullptr && name != nullptr)
    {
        data = find_os_resource(type, name, found_size);
    }
    if (data == nullptr)
    {
        report_missing(type, name);
        return nullptr;
    }
    if (size != nullptr)
    {
        *size = found_size;
    }
    return data;
}

}  // namespace sys
