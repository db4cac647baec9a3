#pragma once

#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"

#include <string>

namespace zq_test
{

// A settings file that the per-user key store (a scratch one: see
// ScratchKeyStore) names for autoload while the object lives, as the user's
// choice in a host would.
class SettingsAutoload
{
public:
    explicit SettingsAutoload(const std::string& text)
    {
        _key.set_string("LatestConfigAutoload", "1");
        _key.set_string("LatestConfigFile", _dir.write_file("mine.cfg", text));
    }
    ~SettingsAutoload() { _key.set_string("LatestConfigAutoload", "0"); }
    SettingsAutoload(const SettingsAutoload&) = delete;
    SettingsAutoload& operator=(const SettingsAutoload&) = delete;

private:
    ScratchDir _dir;
    sys::PersistentKeyList _key{"Velnor/Zarquette/Autoload", true};
};

}  // namespace zq_test
