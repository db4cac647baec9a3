#pragma once

#include <atomic>
#include <string>

namespace lumo
{

// The user's two MIDI options, kept in the registry as "0" or "1": the order
// of the RPN/NRPN number controllers, and whether a learn stays armed after
// binding. Read on the audio thread, written on the host's thread.
class MidiOptions
{
public:
    static constexpr const char* base_path = "Velnor";

    // Reads both options; a missing or unreadable value is written back as
    // the current one. Throws std::runtime_error when a key cannot be opened.
    void load(const std::string& plugin_name);
    // Stores the new mode and keeps it only when the registry took it.
    int set_autobind_mode(int mode);
    void reset() { _loaded.store(false, std::memory_order_release); }

    int get_nrpn_compatibility() const { return _nrpn_compatibility.load(std::memory_order_relaxed); }
    int get_autobind_mode() const { return _autobind.load(std::memory_order_relaxed); }
    bool is_loaded() const { return _loaded.load(std::memory_order_acquire); }

private:
    // The key's value when it is "0" or "1"; otherwise the current one, written back.
    static int read_flag(const std::string& path, const char* name, int current);
    static int write_flag(const std::string& path, const char* name, int value);

    std::atomic<int> _nrpn_compatibility{1};
    std::atomic<int> _autobind{1};
    std::atomic<bool> _loaded{false};
};

}  // namespace lumo
