#include "lumo/SettingMgr.h"

#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/DspInterface.h"
#include "lumo/SettingKeys.h"

#include <cstdio>

namespace lumo
{

int SettingMgr::setup(DspInterface& dsp)
{
    return setup(dsp.get_setting_str(setting_key::plugin_name), dsp.get_setting_num(setting_key::plugin_version),
                 dsp.get_setting_str(setting_key::manufacturer));
}

int SettingMgr::setup(const std::string& plugin_name, double version, const std::string& manufacturer)
{
    _section_name = basic::ConfKeyInterface::make_valid_name(plugin_name) + "_config_section";
    char text[64];
    std::snprintf(text, sizeof(text), "%.2f", version);
    _version = text;
    _autoload = std::make_unique<SettingAutoload>(manufacturer + "/" + plugin_name);
    return 0;
}

void SettingMgr::before_load(const basic::ConfKeyMulti& root, const std::string& /*path*/, int& status)
{
    if (status == 0 && root.get_name() != _section_name)
    {
        status = err_foreign_file;
    }
}

void SettingMgr::before_save(basic::ConfKeyMulti& root, const std::string& /*path*/, int& status)
{
    if (status == 0)
    {
        root.set_name(_section_name);
        root.add_key(basic::ConfKeyData("version", _version));
    }
}

}  // namespace lumo
