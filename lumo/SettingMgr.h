#pragma once

#include "basic/SettingMgrInterface.h"
#include "lumo/SettingAutoload.h"

#include <memory>
#include <string>

namespace lumo
{

class DspInterface;

// The effect's settings manager: its files have one top section named after
// the plug-in ("<plug-in name>_config_section") holding a "version" leaf and
// the keys of every client.
class SettingMgr : public basic::SettingMgrInterface
{
public:
    // A file whose top section belongs to another plug-in.
    static constexpr int err_foreign_file = -3071;

    // Takes the names from the audio side's setting queries; needs nothing of
    // it afterwards. 0.
    int setup(DspInterface& dsp);
    // The same from the plug-in's name, version and manufacturer as the audio
    // side answers them; a host tool uses it to check a file as the plug-in would.
    int setup(const std::string& plugin_name, double version, const std::string& manufacturer);

    // Refuses a foreign file.
    void before_load(const basic::ConfKeyMulti& root, const std::string& path, int& status) override;
    // Names the section and records the version.
    void before_save(basic::ConfKeyMulti& root, const std::string& path, int& status) override;

    const std::string& get_section_name() const { return _section_name; }
    const std::string& get_version() const { return _version; }
    // Null before setup.
    const SettingAutoload* use_autoload() const { return _autoload.get(); }

private:
    std::string _section_name;
    std::string _version;
    std::unique_ptr<SettingAutoload> _autoload;
};

}  // namespace lumo
