#include "lumo/SettingAutoload.h"

#include "basic/SettingMgrInterface.h"
#include "sys/PersistentKeyList.h"

namespace lumo
{

SettingAutoload::SettingAutoload(const std::string& base_path) : _base_path(base_path)
{
}

int SettingAutoload::autoload(basic::SettingMgrInterface& mgr) const
{
    std::string path;
    return find_file(path) ? mgr.load(path) : 0;
}

bool SettingAutoload::find_file(std::string& path) const
{
    std::string enabled;
    if (read_value("LatestConfigAutoload", enabled) != 0 || enabled.empty() || enabled[0] == '0')
    {
        path.clear();
        return false;
    }
    return read_value("LatestConfigFile", path) == 0;
}

int SettingAutoload::read_value(const char* name, std::string& value) const
{
    try
    {
        // Opened, never created: reading a choice must not leave keys behind.
        const sys::PersistentKeyList key(_base_path + "/Autoload/", false);
        return key.get_string(name, value);
    }
    catch (...)
    {
        // Whatever the key store throws (a missing key, an allocation failure
        // of the platform's store) only means the choice cannot be read.
        value.clear();
        return -1;
    }
}

}  // namespace lumo
