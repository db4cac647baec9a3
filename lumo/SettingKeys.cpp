#include "lumo/SettingKeys.h"

#include <cstring>

namespace lumo
{

bool is_setting_key(const char* key, const char* expected)
{
    return key != nullptr && std::strcmp(key, expected) == 0;
}

}  // namespace lumo
