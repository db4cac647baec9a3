#pragma once

// The binary interface between a VST 2 host and a plug-in: the effect record,
// the request numbers in both directions, and the records passed with them.
// Everything here is layout: the static_asserts at the end pin each record to
// the bytes that hosts and plug-ins built by other compilers expect.

#include <cstddef>
#include <cstdint>

// Both directions use the C calling convention; only 32-bit Windows has others
// to tell apart from it.
#if defined(_WIN32) && !defined(_WIN64)
#define LUMO_VST2_CALL __cdecl
#else
#define LUMO_VST2_CALL
#endif

namespace lumo::vst2
{

// Four characters packed big-endian into one number, as the interface writes
// its identifiers ("CcnK", unique IDs).
constexpr std::int32_t four_cc(char a, char b, char c, char d)
{
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(static_cast<unsigned char>(a)) << 24)
                                     | (static_cast<std::uint32_t>(static_cast<unsigned char>(b)) << 16)
                                     | (static_cast<std::uint32_t>(static_cast<unsigned char>(c)) << 8)
                                     | static_cast<std::uint32_t>(static_cast<unsigned char>(d)));
}

// First field of every effect record.
constexpr std::int32_t effect_magic = four_cc('V', 's', 't', 'P');
// First field of every preset and bank file.
constexpr std::int32_t chunk_magic = four_cc('C', 'c', 'n', 'K');
// Kinds of preset and bank files.
constexpr std::int32_t fx_program_params = four_cc('F', 'x', 'C', 'k');
constexpr std::int32_t fx_program_chunk = four_cc('F', 'P', 'C', 'h');
constexpr std::int32_t fx_bank_params = four_cc('F', 'x', 'B', 'k');
constexpr std::int32_t fx_bank_chunk = four_cc('F', 'B', 'C', 'h');
// The answer of the identify request.
constexpr std::int32_t identify_answer = four_cc('N', 'v', 'E', 'f');

struct AEffect;

using HostCallback = std::intptr_t(LUMO_VST2_CALL*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                                    std::intptr_t value, void* ptr, float opt);
using DispatcherProc = std::intptr_t(LUMO_VST2_CALL*)(AEffect* effect, std::int32_t opcode, std::int32_t index,
                                                      std::intptr_t value, void* ptr, float opt);
using ProcessProc = void(LUMO_VST2_CALL*)(AEffect* effect, float** inputs, float** outputs, std::int32_t frames);
using ProcessDoubleProc = void(LUMO_VST2_CALL*)(AEffect* effect, double** inputs, double** outputs,
                                                std::int32_t frames);
using SetParameterProc = void(LUMO_VST2_CALL*)(AEffect* effect, std::int32_t index, float value);
using GetParameterProc = float(LUMO_VST2_CALL*)(AEffect* effect, std::int32_t index);
// The plug-in's exported entry point ("VSTPluginMain", or "main" in older plug-ins).
using EntryProc = AEffect*(LUMO_VST2_CALL*)(HostCallback host);

// The record a plug-in gives the host: its counts, its flags and the entry
// points the host calls. The host never writes to it except through `user`.
struct AEffect
{
    std::int32_t magic;
    DispatcherProc dispatcher;
    ProcessProc process;  // accumulating; obsolete, many plug-ins leave a stub
    SetParameterProc set_parameter;
    GetParameterProc get_parameter;
    std::int32_t num_programs;
    std::int32_t num_params;
    std::int32_t num_inputs;
    std::int32_t num_outputs;
    std::int32_t flags;
    std::intptr_t reserved1;
    std::intptr_t reserved2;
    std::int32_t initial_delay;  // latency in frames
    std::int32_t real_qualities;
    std::int32_t off_qualities;
    float io_ratio;
    void* object;  // the plug-in's own object
    void* user;    // free for the host
    std::int32_t unique_id;
    std::int32_t version;
    ProcessProc process_replacing;
    ProcessDoubleProc process_double_replacing;
    char future[56];
};

// Bits of AEffect::flags.
namespace effect_flags
{
constexpr std::int32_t has_editor = 1 << 0;
constexpr std::int32_t can_mono = 1 << 3;
constexpr std::int32_t can_replacing = 1 << 4;
constexpr std::int32_t program_chunks = 1 << 5;
constexpr std::int32_t is_synth = 1 << 8;
constexpr std::int32_t no_sound_in_stop = 1 << 9;
constexpr std::int32_t can_double_replacing = 1 << 12;
}  // namespace effect_flags

// Requests from the host to the plug-in (the dispatcher's opcode).
enum class PluginOp : std::int32_t
{
    open = 0,
    close = 1,
    set_program = 2,
    get_program = 3,
    set_program_name = 4,
    get_program_name = 5,
    get_param_label = 6,
    get_param_display = 7,
    get_param_name = 8,
    get_vu = 9,
    set_sample_rate = 10,  // opt: the rate
    set_block_size = 11,   // value: the largest block
    mains_changed = 12,    // value: 0 suspend, 1 resume
    edit_get_rect = 13,    // ptr: ERect** filled by the plug-in
    edit_open = 14,        // ptr: the parent window
    edit_close = 15,
    edit_draw = 16,
    edit_mouse = 17,
    edit_key = 18,
    edit_idle = 19,
    edit_top = 20,
    edit_sleep = 21,
    identify = 22,
    get_chunk = 23,  // index: 1 for one program, 0 for the bank; ptr: void** filled
    set_chunk = 24,  // index as above; value: byte count; ptr: the data
    process_events = 25,
    can_be_automated = 26,
    string_to_parameter = 27,
    get_num_program_categories = 28,
    get_program_name_indexed = 29,
    copy_program = 30,
    connect_input = 31,
    connect_output = 32,
    get_input_properties = 33,
    get_output_properties = 34,
    get_plug_category = 35,
    get_current_position = 36,
    get_destination_buffer = 37,
    offline_notify = 38,
    offline_prepare = 39,
    offline_run = 40,
    process_var_io = 41,
    set_speaker_arrangement = 42,
    set_block_size_and_sample_rate = 43,
    set_bypass = 44,
    get_effect_name = 45,
    get_error_text = 46,
    get_vendor_string = 47,
    get_product_string = 48,
    get_vendor_version = 49,
    vendor_specific = 50,
    can_do = 51,
    get_tail_size = 52,
    idle = 53,
    get_icon = 54,
    set_view_position = 55,
    get_parameter_properties = 56,
    keys_required = 57,
    get_vst_version = 58,
    edit_key_down = 59,
    edit_key_up = 60,
    set_edit_knob_mode = 61,
    get_midi_program_name = 62,
    get_current_midi_program = 63,
    get_midi_program_category = 64,
    has_midi_programs_changed = 65,
    get_midi_key_name = 66,
    begin_set_program = 67,
    end_set_program = 68,
    // Later interface versions; hosts send the first two around playback.
    start_process = 71,
    stop_process = 72,
};

// Requests from the plug-in to the host (the host callback's opcode).
enum class HostOp : std::int32_t
{
    automate = 0,  // index: parameter; opt: normalized value
    version = 1,
    current_id = 2,
    idle = 3,
    pin_connected = 4,  // index: pin; value: 0 input, 1 output; answer 0 = connected
    want_midi = 6,
    get_time = 7,  // value: mask of time_info_flags wanted; answers a TimeInfo*
    process_events = 8,
    set_time = 9,
    tempo_at = 10,  // value: frame position; answers beats per minute × 10000
    get_num_automatable_parameters = 11,
    get_parameter_quantization = 12,
    io_changed = 13,
    need_idle = 14,
    size_window = 15,  // index: width; value: height
    get_sample_rate = 16,
    get_block_size = 17,
    get_input_latency = 18,
    get_output_latency = 19,
    get_previous_plug = 20,
    get_next_plug = 21,
    will_replace_or_accumulate = 22,
    get_current_process_level = 23,
    get_automation_state = 24,
    offline_start = 25,
    offline_read = 26,
    offline_write = 27,
    offline_get_current_pass = 28,
    offline_get_current_meta_pass = 29,
    set_output_sample_rate = 30,
    get_output_speaker_arrangement = 31,
    get_vendor_string = 32,
    get_product_string = 33,
    get_vendor_version = 34,
    vendor_specific = 35,
    set_icon = 36,
    can_do = 37,
    get_language = 38,
    open_window = 39,
    close_window = 40,
    get_directory = 41,
    update_display = 42,
    begin_edit = 43,
    end_edit = 44,
    open_file_selector = 45,
    close_file_selector = 46,
    edit_file = 47,
    get_chunk_file = 48,
    get_input_speaker_arrangement = 49,
};

// Answers of PluginOp::get_plug_category.
enum class PlugCategory : std::int32_t
{
    unknown = 0,
    effect = 1,
    synth = 2,
    analysis = 3,
    mastering = 4,
    spacializer = 5,
    room_fx = 6,
    surround_fx = 7,
    restoration = 8,
    offline_process = 9,
    shell = 10,
    generator = 11,
};

// Answers of HostOp::get_current_process_level.
enum class ProcessLevel : std::int32_t
{
    unknown = 0,
    user = 1,
    realtime = 2,
    prefetch = 3,
    offline = 4,
};

// Answers of HostOp::get_language.
enum class HostLanguage : std::int32_t
{
    english = 1,
    german = 2,
    french = 3,
    italian = 4,
    spanish = 5,
    japanese = 6,
};

// Buffer sizes the interface names for its texts. Plug-ins are known to write
// past them, so a careful host hands out larger buffers.
constexpr std::size_t max_program_name_len = 24;
constexpr std::size_t max_param_str_len = 8;
constexpr std::size_t max_vendor_str_len = 64;
constexpr std::size_t max_product_str_len = 64;
constexpr std::size_t max_effect_name_len = 32;
constexpr std::size_t max_label_len = 64;
constexpr std::size_t max_short_label_len = 8;

// One event in a VstEvents block; its type tells which record it really is.
struct Event
{
    std::int32_t type;
    std::int32_t byte_size;  // of the record after these first two fields
    std::int32_t delta_frames;
    std::int32_t flags;
    char data[16];
};

namespace event_types
{
constexpr std::int32_t midi = 1;
constexpr std::int32_t sysex = 6;
}  // namespace event_types

struct MidiEvent
{
    std::int32_t type;  // event_types::midi
    std::int32_t byte_size;
    std::int32_t delta_frames;
    std::int32_t flags;  // midi_event_flags
    std::int32_t note_length;
    std::int32_t note_offset;
    char midi_data[4];  // status and up to two data bytes, the fourth is zero
    char detune;
    char note_off_velocity;
    char reserved1;
    char reserved2;
};

namespace midi_event_flags
{
constexpr std::int32_t is_realtime = 1 << 0;
}

struct MidiSysexEvent
{
    std::int32_t type;  // event_types::sysex
    std::int32_t byte_size;
    std::int32_t delta_frames;
    std::int32_t flags;
    std::int32_t dump_bytes;
    std::intptr_t reserved1;
    char* sysex_dump;
    std::intptr_t reserved2;
};

// A block of events; the array really holds num_events pointers.
struct Events
{
    std::int32_t num_events;
    std::intptr_t reserved;
    Event* events[2];
};

// The host's transport and musical position, answered to HostOp::get_time.
struct TimeInfo
{
    double sample_pos;      // frames since the start of the song
    double sample_rate;
    double nano_seconds;    // system time
    double ppq_pos;         // quarter notes since the start of the song
    double tempo;           // beats per minute
    double bar_start_pos;   // ppq position of the current bar's first beat
    double cycle_start_pos;
    double cycle_end_pos;
    std::int32_t time_sig_numerator;
    std::int32_t time_sig_denominator;
    std::int32_t smpte_offset;
    std::int32_t smpte_frame_rate;
    std::int32_t samples_to_next_clock;
    std::int32_t flags;  // time_info_flags
};

namespace time_info_flags
{
constexpr std::int32_t transport_changed = 1 << 0;
constexpr std::int32_t transport_playing = 1 << 1;
constexpr std::int32_t transport_cycle_active = 1 << 2;
constexpr std::int32_t transport_recording = 1 << 3;
constexpr std::int32_t automation_writing = 1 << 6;
constexpr std::int32_t automation_reading = 1 << 7;
constexpr std::int32_t nanos_valid = 1 << 8;
constexpr std::int32_t ppq_pos_valid = 1 << 9;
constexpr std::int32_t tempo_valid = 1 << 10;
constexpr std::int32_t bars_valid = 1 << 11;
constexpr std::int32_t cycle_pos_valid = 1 << 12;
constexpr std::int32_t time_sig_valid = 1 << 13;
constexpr std::int32_t smpte_valid = 1 << 14;
constexpr std::int32_t clock_valid = 1 << 15;
}  // namespace time_info_flags

// Description of one input or output pin.
struct PinProperties
{
    char label[64];
    std::int32_t flags;  // pin_flags
    std::int32_t arrangement_type;  // speaker_arrangements
    char short_label[8];
    char future[48];
};

namespace pin_flags
{
constexpr std::int32_t is_active = 1 << 0;
constexpr std::int32_t is_stereo = 1 << 1;  // first of a stereo pair
constexpr std::int32_t use_speaker = 1 << 2;
}  // namespace pin_flags

namespace speaker_arrangements
{
constexpr std::int32_t user_defined = -2;
constexpr std::int32_t empty = -1;
constexpr std::int32_t mono = 0;
constexpr std::int32_t stereo = 1;
}  // namespace speaker_arrangements

// Description of one parameter, answered to PluginOp::get_parameter_properties.
struct ParameterProperties
{
    float step_float;
    float small_step_float;
    float large_step_float;
    char label[64];
    std::int32_t flags;  // parameter_flags
    std::int32_t min_integer;
    std::int32_t max_integer;
    std::int32_t step_integer;
    std::int32_t large_step_integer;
    char short_label[8];
    std::int16_t display_index;
    std::int16_t category;
    std::int16_t num_parameters_in_category;
    std::int16_t reserved;
    char category_label[24];
    char future[16];
};

namespace parameter_flags
{
constexpr std::int32_t is_switch = 1 << 0;
constexpr std::int32_t uses_integer_min_max = 1 << 1;
constexpr std::int32_t uses_float_step = 1 << 2;
constexpr std::int32_t uses_int_step = 1 << 3;
constexpr std::int32_t supports_display_index = 1 << 4;
constexpr std::int32_t supports_display_category = 1 << 5;
constexpr std::int32_t can_ramp = 1 << 6;
}  // namespace parameter_flags

// The editor's size, answered to PluginOp::edit_get_rect.
struct ERect
{
    std::int16_t top;
    std::int16_t left;
    std::int16_t bottom;
    std::int16_t right;
};

// Layout checks for the three binary interfaces the project builds for.
static_assert(sizeof(Event) == 32 && sizeof(MidiEvent) == 32);
static_assert(offsetof(MidiEvent, midi_data) == 24 && offsetof(MidiEvent, detune) == 28);
static_assert(sizeof(TimeInfo) == 88 && offsetof(TimeInfo, tempo) == 32 && offsetof(TimeInfo, flags) == 84);
static_assert(offsetof(TimeInfo, time_sig_numerator) == 64);
static_assert(sizeof(PinProperties) == 128 && offsetof(PinProperties, short_label) == 72);
static_assert(sizeof(ParameterProperties) == 152);
static_assert(offsetof(ParameterProperties, label) == 12 && offsetof(ParameterProperties, flags) == 76);
static_assert(offsetof(ParameterProperties, short_label) == 96);
static_assert(offsetof(ParameterProperties, display_index) == 104);
static_assert(offsetof(ParameterProperties, category_label) == 112);
static_assert(sizeof(ERect) == 8);

#if defined(_WIN32) && !defined(_WIN64)
// 32-bit Windows: 4-byte pointers, doubles aligned to 8 inside records.
static_assert(sizeof(void*) == 4 && alignof(TimeInfo) == 8);
static_assert(sizeof(AEffect) == 144);
static_assert(offsetof(AEffect, dispatcher) == 4 && offsetof(AEffect, num_programs) == 20);
static_assert(offsetof(AEffect, flags) == 36 && offsetof(AEffect, reserved1) == 40);
static_assert(offsetof(AEffect, initial_delay) == 48 && offsetof(AEffect, io_ratio) == 60);
static_assert(offsetof(AEffect, object) == 64 && offsetof(AEffect, unique_id) == 72);
static_assert(offsetof(AEffect, process_replacing) == 80 && offsetof(AEffect, future) == 88);
static_assert(sizeof(Events) == 16 && offsetof(Events, events) == 8);
static_assert(sizeof(MidiSysexEvent) == 32 && offsetof(MidiSysexEvent, sysex_dump) == 24);
#elif (defined(_WIN64) || defined(__x86_64__))
// 64-bit Windows and x86_64 Linux: 8-byte pointers with padding after
// the leading 32-bit fields.
static_assert(sizeof(void*) == 8 && alignof(TimeInfo) == 8);
static_assert(sizeof(AEffect) == 192);
static_assert(offsetof(AEffect, dispatcher) == 8 && offsetof(AEffect, num_programs) == 40);
static_assert(offsetof(AEffect, flags) == 56 && offsetof(AEffect, reserved1) == 64);
static_assert(offsetof(AEffect, initial_delay) == 80 && offsetof(AEffect, io_ratio) == 92);
static_assert(offsetof(AEffect, object) == 96 && offsetof(AEffect, unique_id) == 112);
static_assert(offsetof(AEffect, process_replacing) == 120 && offsetof(AEffect, future) == 136);
static_assert(sizeof(Events) == 32 && offsetof(Events, events) == 16);
static_assert(sizeof(MidiSysexEvent) == 48 && offsetof(MidiSysexEvent, sysex_dump) == 32);
#else
#error "No layout checks for this target; add its numbers before building for it."
#endif

}  // namespace lumo::vst2
