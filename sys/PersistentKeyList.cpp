#include "sys/PersistentKeyList.h"

#include <cstring>
#include <stdexcept>

namespace sys
{

PersistentKeyList::PersistentKeyList(const std::string& path, bool create) : _state(open_software_key())
{
    std::size_t begin = 0;
    while (begin <= path.size())
    {
        const std::size_t slash = path.find('/', begin);
        const std::size_t end = slash == std::string::npos ? path.size() : slash;
        if (end > begin)
        {
            open_sub_key(path.substr(begin, end - begin), create);
        }
        begin = end + 1;
    }
}

PersistentKeyList::~PersistentKeyList() = default;

int PersistentKeyList::get_string(const std::string& name, std::string& value) const
{
    // Room for the longest value, the zero the registry stores after it, and
    // the zero put after whatever came back.
    char buffer[max_value_size + 2];
    std::size_t length = 0;
    if (!query_value(name, buffer, max_value_size + 1, length))
    {
        value.clear();
        return -1;
    }
    buffer[length] = '\0';
    value.assign(buffer, std::strlen(buffer));
    return 0;
}

int PersistentKeyList::set_string(const std::string& name, const std::string& value)
{
    if (value.size() > max_value_size || value.find('\0') != std::string::npos)
    {
        return -1;
    }
    return store_value(name, value) ? 0 : -1;
}

void PersistentKeyList::throw_path_error(bool create)
{
    throw std::runtime_error(create ? "sys::PersistentKeyList::PersistentKeyList () : Cannot create path."
                                    : "sys::PersistentKeyList::PersistentKeyList () : Cannot open path.");
}

}  // namespace sys
