#pragma once

#include "FxFile.h"

#include <string>

namespace vsthost
{

class HostedPlugin;

// Moves a plug-in's state into and out of preset and bank files the way VST 2
// hosts do: through the plug-in's chunk when it declares program chunks,
// otherwise through its programs and parameter values.
class FxExchange
{
public:
    static constexpr int error_wrong_plugin = -2101;  // another unique ID
    static constexpr int error_kind = -2102;          // chunk file for a plug-in without chunks, or the reverse
    static constexpr int error_refused = -2103;       // the plug-in refused the chunk

    // The current program (bank false) or all programs (bank true).
    static FxFile capture(HostedPlugin& plugin, bool bank);
    // 0, or an error code of this class; with ignore_id a file of another
    // unique ID is applied all the same.
    static int apply(HostedPlugin& plugin, const FxFile& file, bool ignore_id = false);
    static const char* get_error_text(int code);
    // A name that ends in ".fxb" (letter case ignored) is a bank.
    static bool is_bank_path(const std::string& path);
    // Reads and parses a file; throws std::runtime_error on failure.
    static FxFile load(const std::string& path);

private:
    static FxProgram capture_program(HostedPlugin& plugin);
    static void apply_program(HostedPlugin& plugin, const FxProgram& program);
};

}  // namespace vsthost
