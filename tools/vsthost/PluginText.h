#pragma once

#include <cstdint>
#include <string>

namespace vsthost
{

// Readable forms of the interface's numbers, for the tool's reports.
std::string describe_unique_id(std::int32_t id);  // 'VZrq' (0x565A7271)
std::string describe_effect_flags(std::int32_t flags);
std::string describe_category(std::intptr_t category);
std::string describe_pin_flags(std::int32_t flags);
std::string describe_parameter_flags(std::int32_t flags);
std::string describe_can_do(std::intptr_t answer);  // yes, no, don't know
// What a settings manager's load answered, for a file whose top section
// must be section_name.
std::string describe_settings_result(int code, const std::string& section_name);

}  // namespace vsthost
