#pragma once

#include <atomic>
#include <cstdint>

namespace gadu
{

// Whether knobs may hide the cursor and drag endlessly (mode 0), or must keep
// a plain capture with a visible cursor and absolute positions (mode 1), for
// systems (remote desktops, tablets, some hosts) where warping the cursor
// misbehaves. One setting for the whole process, kept in the user's own
// settings under the maker's key, so that all of the maker's plug-ins share it.
class MouseCompatibility
{
public:
    static constexpr const char* kKeyPath = "Velnor";
    static constexpr const char* kValueName = "MouseCompatibility";
    static constexpr std::int32_t kEndlessDrag = 0;
    static constexpr std::int32_t kPlainCapture = 1;

    static MouseCompatibility& use_instance();

    // Loads the setting on first use.
    std::int32_t get_mode();
    // Stores the mode and writes it to the user's settings; modes other than 0
    // and 1 are refused with -1.
    std::int32_t set_mode(std::int32_t mode);
    // Reads the user's settings now: a stored 0 or 1 is taken; anything else
    // (missing, garbage) means mode 0, which is written back so that the user
    // finds the setting to edit.
    void load();

private:
    MouseCompatibility() = default;

    static constexpr std::int32_t kNotLoaded = -1;

    // Two editors of one process may load it on two threads at once; both
    // read the same store, so either answer is right.
    std::atomic<std::int32_t> _mode{kNotLoaded};
};

}  // namespace gadu
