#include "lumo/EditorZoom.h"

#include "sys/PersistentKeyList.h"

#include <stdexcept>

namespace lumo
{

namespace
{

// The maker's key, below which each plug-in keeps its own.
constexpr const char* maker_path = "Velnor";

}  // namespace

int EditorZoom::read(const std::string& plugin_name)
{
    try
    {
        sys::PersistentKeyList key(std::string(maker_path) + "/" + plugin_name, true);
        std::string text;
        if (key.get_string(value_name, text) != 0)
        {
            key.set_string(value_name, "1");
            return normal;
        }
        if (text.size() == 1 && text[0] >= '1' && text[0] <= '0' + largest)
        {
            return text[0] - '0';
        }
    }
    catch (const std::runtime_error&)
    {
        // The editor still opens, at its normal size.
    }
    return normal;
}

}  // namespace lumo
