#pragma once

namespace basic
{

class ConfKeyMulti;

// A part of the plug-in that keeps user configuration in the settings file.
// Each client reads and writes its own keys below the file's top section.
class SettingClientInterface
{
public:
    virtual ~SettingClientInterface() = default;

    // Adds the client's keys to root; 0 or an error code.
    virtual int save_settings(ConfKeyMulti& root) = 0;
    // Takes the client's keys from root; 0 or an error code.
    virtual int load_settings(const ConfKeyMulti& root) = 0;
};

}  // namespace basic
