#include "gadu/MouseCompatibility.h"

#include "sys/PersistentKeyList.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace gadu
{

namespace
{

std::string format_mode(std::int32_t mode)
{
    char text[16];
    std::snprintf(text, sizeof(text), "%d", static_cast<int>(mode));
    return text;
}

}  // namespace

MouseCompatibility& MouseCompatibility::use_instance()
{
    static MouseCompatibility instance;
    return instance;
}

std::int32_t MouseCompatibility::get_mode()
{
    if (_mode.load(std::memory_order_acquire) == kNotLoaded)
    {
        load();
    }
    return _mode.load(std::memory_order_acquire);
}

std::int32_t MouseCompatibility::set_mode(std::int32_t mode)
{
    if (mode != kEndlessDrag && mode != kPlainCapture)
    {
        return -1;
    }
    _mode.store(mode, std::memory_order_release);
    try
    {
        sys::PersistentKeyList key(kKeyPath, true);
        return key.set_string(kValueName, format_mode(mode));
    }
    catch (const std::runtime_error&)
    {
        // The mode holds for this process even where it cannot be kept.
        return -1;
    }
}

void MouseCompatibility::load()
{
    std::int32_t mode = kEndlessDrag;
    try
    {
        sys::PersistentKeyList key(kKeyPath, true);
        std::string text;
        if (key.get_string(kValueName, text) == 0 && (text == "0" || text == "1"))
        {
            mode = text == "1" ? kPlainCapture : kEndlessDrag;
        }
        else
        {
            key.set_string(kValueName, format_mode(mode));
        }
    }
    catch (const std::runtime_error&)
    {
        // A settings store that cannot be opened must not cost the user the
        // knobs: they work with the default mode.
    }
    _mode.store(mode, std::memory_order_release);
}

}  // namespace gadu
