#pragma once

namespace lumo
{

// The plug-in's state properties, as fragments of the plug-in's URI: both
// hold big-endian records in an atom:Chunk.
namespace lv2_state_key
{
// The current program: the same record as a VST 2 program chunk.
constexpr const char* program = "#program";
// The controller of every parameter (Lv2BindingRecord).
constexpr const char* midi_bindings = "#midi_bindings";
}  // namespace lv2_state_key

}  // namespace lumo
