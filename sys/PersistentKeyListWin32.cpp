#include "sys/PersistentKeyList.h"

#include "sys/PersistentKeyListHandles.h"

#include <windows.h>

namespace sys
{

namespace
{

constexpr REGSAM key_access = KEY_READ | KEY_WRITE;

struct CloseHandle
{
    void operator()(HKEY key) const { ::RegCloseKey(key); }
};

}  // namespace

// "Software" first, then one key per path component.
struct PersistentKeyList::State : PersistentKeyListHandles<HKEY, CloseHandle>
{
};

void PersistentKeyList::StateDeleter::operator()(State* state) const
{
    delete state;
}

PersistentKeyList::StatePtr PersistentKeyList::open_software_key()
{
    StatePtr state(new State());
    state->make_room();
    HKEY key = nullptr;
    if (::RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, key_access, &key) != ERROR_SUCCESS)
    {
        throw_path_error(false);
    }
    state->add(key);
    return state;
}

void PersistentKeyList::open_sub_key(const std::string& name, bool create)
{
    _state->make_room();
    HKEY key = nullptr;
    const LONG result =
        create ? ::RegCreateKeyExA(_state->use_last(), name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                   key_access, nullptr, &key, nullptr)
               : ::RegOpenKeyExA(_state->use_last(), name.c_str(), 0, key_access, &key);
    if (result != ERROR_SUCCESS)
    {
        throw_path_error(create);
    }
    _state->add(key);
}

bool PersistentKeyList::query_value(const std::string& name, char* buffer, std::size_t capacity,
                                    std::size_t& length) const
{
    DWORD size = static_cast<DWORD>(capacity);
    const LONG result = ::RegQueryValueExA(_state->use_last(), name.c_str(), nullptr, nullptr,
                                           reinterpret_cast<BYTE*>(buffer), &size);
    if (result != ERROR_SUCCESS || size > capacity)
    {
        return false;
    }
    length = size;
    return true;
}

bool PersistentKeyList::store_value(const std::string& name, const std::string& value)
{
    // The terminating zero is stored with the text, as REG_SZ wants it.
    return ::RegSetValueExA(_state->use_last(), name.c_str(), 0, REG_SZ,
                            reinterpret_cast<const BYTE*>(value.c_str()),
                            static_cast<DWORD>(value.size() + 1)) == ERROR_SUCCESS;
}
}  // namespace sys
