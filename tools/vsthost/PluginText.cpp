#include "PluginText.h"

#include "lumo/SettingMgr.h"
#include "lumo/vst2/Vst2Abi.h"

#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

namespace vsthost
{

namespace
{

std::string hex(std::uint32_t v)
{
    char text[16] = {};
    std::snprintf(text, sizeof text, "0x%X", v);
    return text;
}

std::string describe_bits(std::int32_t flags, std::initializer_list<std::pair<std::int32_t, const char*>> names)
{
    std::string out = hex(static_cast<std::uint32_t>(flags));
    std::string list;
    for (const auto& [bit, name] : names)
    {
        if ((flags & bit) != 0)
        {
            list += (list.empty() ? "" : ", ") + std::string(name);
        }
    }
    return list.empty() ? out : out + " (" + list + ")";
}

}  // namespace

std::string describe_unique_id(std::int32_t id)
{
    std::string chars;
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        const char c = static_cast<char>((static_cast<std::uint32_t>(id) >> shift) & 0xFFu);
        chars += (c >= 32 && c < 127) ? c : '.';
    }
    return "'" + chars + "' (" + hex(static_cast<std::uint32_t>(id)) + ")";
}

std::string describe_effect_flags(std::int32_t flags)
{
    namespace f = lumo::vst2::effect_flags;
    return describe_bits(flags, {{f::has_editor, "has editor"},
                                 {f::can_mono, "can mono"},
                                 {f::can_replacing, "can replacing"},
                                 {f::program_chunks, "program chunks"},
                                 {f::is_synth, "is synth"},
                                 {f::no_sound_in_stop, "no sound in stop"},
                                 {f::can_double_replacing, "can double replacing"}});
}

std::string describe_category(std::intptr_t category)
{
    static const char* const names[] = {"unknown",     "effect",      "synth",       "analysis",
                                        "mastering",   "spacializer", "room fx",     "surround fx",
                                        "restoration", "offline",     "shell",       "generator"};
    const bool known = category >= 0 && category < static_cast<std::intptr_t>(sizeof names / sizeof names[0]);
    return std::string(known ? names[category] : "?") + " (" + std::to_string(category) + ")";
}

std::string describe_pin_flags(std::int32_t flags)
{
    namespace f = lumo::vst2::pin_flags;
    return describe_bits(flags, {{f::is_active, "active"}, {f::is_stereo, "stereo"}, {f::use_speaker, "speaker"}});
}

std::string describe_parameter_flags(std::int32_t flags)
{
    namespace f = lumo::vst2::parameter_flags;
    return describe_bits(flags, {{f::is_switch, "switch"},
                                 {f::uses_integer_min_max, "integer range"},
                                 {f::uses_float_step, "float step"},
                                 {f::uses_int_step, "integer step"},
                                 {f::supports_display_index, "display index"},
                                 {f::supports_display_category, "category"},
                                 {f::can_ramp, "can ramp"}});
}

std::string describe_can_do(std::intptr_t answer)
{
    return answer > 0 ? "yes" : (answer < 0 ? "no" : "don't know");
}

std::string describe_settings_result(int code, const std::string& section_name)
{
    using Mgr = lumo::SettingMgr;
    switch (code)
    {
    case 0: return "loads";
    case Mgr::err_cannot_open: return "cannot be opened";
    case Mgr::err_cannot_read: return "cannot be read";
    case Mgr::err_not_section: return "its top key is not a section";
    case Mgr::err_foreign_file: return "refused: its top section is not " + section_name;
    default: break;
    }
    // The key reader's own code: 0 for a text without any token, else -1015 to -1024.
    const int reader_code = code - Mgr::err_reader_offset;
    if (reader_code == 0 || (reader_code <= -1015 && reader_code >= -1024))
    {
        return "holds no key (reader error " + std::to_string(reader_code) + ")";
    }
    return "refused by a settings client";
}

}  // namespace vsthost
