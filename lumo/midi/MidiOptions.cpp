#include "lumo/midi/MidiOptions.h"

#include "lumo/TextCompare.h"
#include "sys/PersistentKeyList.h"

namespace lumo
{
namespace
{

constexpr const char* nrpn_compatibility_name = "NRPN Compatibility";
constexpr const char* autobind_name = "Autobind Mode";

}  // namespace

void MidiOptions::load(const std::string& plugin_name)
{
    const std::string own_path = std::string(base_path) + "/" + plugin_name;
    _nrpn_compatibility.store(read_flag(own_path, nrpn_compatibility_name, get_nrpn_compatibility()),
                              std::memory_order_relaxed);
    _autobind.store(read_flag(base_path, autobind_name, get_autobind_mode()), std::memory_order_relaxed);
    _loaded.store(true, std::memory_order_release);
}

int MidiOptions::set_autobind_mode(int mode)
{
    const int err = write_flag(base_path, autobind_name, mode);
    if (err == 0)
    {
        _autobind.store(mode != 0 ? 1 : 0, std::memory_order_relaxed);
    }
    return err;
}

int MidiOptions::read_flag(const std::string& path, const char* name, int current)
{
    std::string text;
    {
        const sys::PersistentKeyList key(path, true);
        if (key.get_string(name, text) == 0)
        {
            if (equals_ignoring_case(text.c_str(), "0"))
            {
                return 0;
            }
            if (equals_ignoring_case(text.c_str(), "1"))
            {
                return 1;
            }
        }
    }
    write_flag(path, name, current);
    return current;
}

int MidiOptions::write_flag(const std::string& path, const char* name, int value)
{
    sys::PersistentKeyList key(path, true);
    return key.set_string(name, value != 0 ? "1" : "0");
}

}  // namespace lumo
