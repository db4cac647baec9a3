#pragma once

namespace lumo
{

// Text keys of the setting queries between the audio side, the editor and the
// host adapter. Unknown keys answer 0.0 or the empty text.
namespace setting_key
{
constexpr const char* plugin_name = "plugin_name";
constexpr const char* plugin_name_display = "plugin_name_display";
constexpr const char* manufacturer = "manufacturer";
constexpr const char* plugin_category = "plugin_category";
constexpr const char* plugin_version = "plugin_version";
constexpr const char* can_mono = "can_mono";
constexpr const char* can_scaled_val = "can_scaled_val";
constexpr const char* hide_parameters = "hide_parameters";
constexpr const char* force_chunk_storage = "force_chunk_storage";
constexpr const char* can_tempo = "can_tempo";
constexpr const char* param_quantization = "param_quantization";
constexpr const char* can_resize_window = "can_resize_window";
constexpr const char* interface_standard = "interface_standard";
constexpr const char* interface_info = "interface_info";
}  // namespace setting_key

// Whole, case-sensitive comparison of a query's key; a null key matches nothing.
bool is_setting_key(const char* key, const char* expected);

}  // namespace lumo
