#pragma once

#include <string>

namespace basic
{
class SettingMgrInterface;
}

namespace lumo
{

// Loads, when the user allows it, the configuration file used last. Both
// choices live in the user's key "<base path>/Autoload": "LatestConfigAutoload"
// (enabled unless missing, empty or starting with "0") and "LatestConfigFile".
class SettingAutoload
{
public:
    // base_path: "<manufacturer>/<plug-in name>".
    explicit SettingAutoload(const std::string& base_path);

    // The manager's answer to loading the file; 0 when autoload is off or no
    // file is named.
    int autoload(basic::SettingMgrInterface& mgr) const;
    // The file the autoload would load: true and its path when autoload is on
    // and a file is named, false otherwise. Lets a host tool show the user
    // which file is meant and what loading it answers.
    bool find_file(std::string& path) const;

    const std::string& get_base_path() const { return _base_path; }

private:
    // 0 and the value, or -1 when the key or the value cannot be read.
    int read_value(const char* name, std::string& value) const;

    std::string _base_path;
};

}  // namespace lumo
