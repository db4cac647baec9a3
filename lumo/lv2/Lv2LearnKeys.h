#pragma once

namespace lumo
{

// The MIDI learn conversation between the editor and the audio side
// (Lv2LearnMessage), as fragments of the plug-in's URI: the objects' types
// and their properties. The bindings travel under the state's own key
// (lv2_state_key::midi_bindings), as the same record.
namespace lv2_learn_key
{
// Editor to audio side.
constexpr const char* learn_start = "#LearnStart";
constexpr const char* learn_cancel = "#LearnCancel";
constexpr const char* learn_forget = "#LearnForget";
constexpr const char* bindings_get = "#BindingsGet";
// Audio side to editor.
constexpr const char* bindings = "#Bindings";
// Properties.
constexpr const char* parameter = "#parameter";
constexpr const char* pending_learn = "#pendingLearn";
constexpr const char* learn_count = "#learnCount";
}  // namespace lv2_learn_key

}  // namespace lumo
