#include "sys/PersistentKeyList.h"

#include <windows.h>

#include <vector>

namespace sys
{

namespace
{

constexpr REGSAM key_access = KEY_READ | KEY_WRITE;

}  // namespace

struct PersistentKeyList::State
{
    State() = default;
    State(const State&) = delete;
    State& operator=(const State&) = delete;
    ~State()
    {
        for (auto it = keys.rbegin(); it != keys.rend(); ++it)
        {
            ::RegCloseKey(*it);
        }
    }

    HKEY use_last() const { return keys.back(); }

    // First "Software", then one key per path component.
    std::vector<HKEY> keys;
};

void PersistentKeyList::StateDeleter::operator()(State* state) const
{
    delete state;
}

PersistentKeyList::StatePtr PersistentKeyList::open_software_key()
{
    StatePtr state(new State());
    HKEY key = nullptr;
    if (::RegOpenKeyExA(HKEY_CURRENT_USER, "Software", 0, key_access, &key) != ERROR_SUCCESS)
    {
        throw_path_error(false);
    }
    state->keys.push_back(key);
    return state;
}

void PersistentKeyList::open_sub_key(const std::string& name, bool create)
{
    // Reserved first, so that appending the opened key cannot fail and leak it.
    _state->keys.reserve(_state->keys.size() + 1);
    HKEY key = nullptr;
    const LONG result =
        create ? ::RegCreateKeyExA(_state->use_last(), name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                   key_access, nullptr, &key, nullptr)
               : ::RegOpenKeyExA(_state->use_last(), name.c_str(), 0, key_access, &key);
    if (result != ERROR_SUCCESS)
    {
        throw_path_error(create);
    }
    _state->keys.push_back(key);
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
