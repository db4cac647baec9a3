#include "MidiValidator.h"

#include "AllocationCounter.h"
#include "AudioValidator.h"
#include "HostedPlugin.h"
#include "ValidationOptions.h"
#include "ValidationReport.h"

#include <climits>
#include <string>

namespace vsthost
{

namespace
{

constexpr int block_frames = 512;
constexpr double check_rate = 44100.0;
// Above what any plug-in can be expected to keep per block: it must cope by
// dropping, not by writing past its own lists.
constexpr std::size_t oversized_count = 12000;
constexpr std::size_t messages_per_block = 1024;
constexpr int nrpn_count = 16384;
constexpr int channels = 16;

std::uint8_t byte(int v)
{
    return static_cast<std::uint8_t>(v);
}

}  // namespace

MidiValidator::MidiValidator(HostedPlugin& plugin, AudioValidator& audio, const ValidationOptions& options,
                             ValidationReport& report, std::mt19937& rng)
    : _plugin(plugin), _audio(audio), _options(options), _report(report), _rng(rng), _block(oversized_count)
{
}

void MidiValidator::check_input()
{
    const bool receives = _plugin.receives_midi();
    if (!receives)
    {
        _report.skip("MIDI input", "the plug-in does not take VST MIDI events");
    }
    for (auto check : {&MidiValidator::check_controllers, &MidiValidator::check_nrpns,
                       &MidiValidator::check_bad_data_bytes, &MidiValidator::check_missing_status,
                       &MidiValidator::check_foreign_events, &MidiValidator::check_offsets_outside_block,
                       &MidiValidator::check_oversized_lists, &MidiValidator::check_broken_lists,
                       &MidiValidator::check_flood, &MidiValidator::check_allocations})
    {
        if (!receives)
        {
            break;
        }
        // Suspended and resumed before each check, so that a plug-in that
        // one check breaks gets a fresh start in the next.
        _audio.prepare(check_rate, block_frames);
        (this->*check)();
    }
}

std::string MidiValidator::play_block(int frames)
{
    _plugin.send_events(_block.use_events());
    const std::string fault = _audio.process_noise(frames, 1);
    _block.clear();
    return fault;
}

std::string MidiValidator::play_stream(std::size_t total, std::size_t per_block,
                                       const std::function<Message(std::size_t)>& make)
{
    for (std::size_t first = 0; first < total; first += per_block)
    {
        const std::size_t count = std::min(per_block, total - first);
        for (std::size_t i = 0; i < count; ++i)
        {
            const Message m = make(first + i);
            _block.add(static_cast<std::int32_t>(i * block_frames / count), m[0], m[1], m[2]);
        }
        const std::string fault = play_block(block_frames);
        if (!fault.empty())
        {
            return fault + " (after message " + std::to_string(first + count) + ")";
        }
    }
    return {};
}

void MidiValidator::expect_clean(const std::string& check, const std::string& fault, const std::string& detail)
{
    _report.expect(fault.empty(), check, fault.empty() ? detail + ", clean output" : fault);
}

MidiValidator::Message MidiValidator::random_message()
{
    // Any channel message with valid data bytes.
    std::uniform_int_distribution<int> status(0x80, 0xEF);
    std::uniform_int_distribution<int> data(0, 127);
    return {byte(status(_rng)), byte(data(_rng)), byte(data(_rng))};
}

void MidiValidator::check_controllers()
{
    // Every controller, mode messages included, at the extremes and the middle.
    const int values[] = {0, 1, 63, 64, 126, 127, 0};
    constexpr std::size_t per_controller = sizeof values / sizeof values[0];
    const std::string fault =
        play_stream(channels * 128 * per_controller, messages_per_block / 4, [&](std::size_t i) {
            const auto channel = static_cast<int>(i / (128 * per_controller));
            const auto controller = static_cast<int>(i / per_controller % 128);
            return Message{byte(0xB0 + channel), byte(controller), byte(values[i % per_controller])};
        });
    expect_clean("MIDI controllers on every channel", fault, "128 controllers x 16 channels x 7 values");
}

void MidiValidator::check_nrpns()
{
    // Each NRPN number gets one value of a sweep across the 14-bit range; the
    // basic level takes every 16th number.
    const int step = _options.level <= 1 ? 16 : 1;
    const std::size_t numbers = nrpn_count / static_cast<std::size_t>(step);
    const std::string fault = play_stream(channels * numbers * 4, messages_per_block, [&](std::size_t i) {
        const auto channel = static_cast<int>(i / (numbers * 4));
        const auto number = static_cast<int>(i / 4 % numbers) * step;
        const int value = (number * 7919) % nrpn_count;
        const int part = static_cast<int>(i % 4);
        const int controller[] = {99, 98, 6, 38};
        const int data[] = {number >> 7, number & 127, value >> 7, value & 127};
        return Message{byte(0xB0 + channel), byte(controller[part]), byte(data[part])};
    });
    expect_clean("MIDI NRPNs on every channel", fault,
                 std::to_string(numbers) + " NRPN numbers x 16 channels, values across 0..16383");
}

void MidiValidator::check_bad_data_bytes()
{
    // Every kind of channel message with a junk first, second or both data
    // bytes, the other one valid.
    const std::string fault = play_stream(7 * 128 * 3, messages_per_block / 4, [](std::size_t i) {
        const auto kind = static_cast<int>(i / 384);
        const auto v = static_cast<int>(i % 384 / 3);
        const int forms[3][2] = {{v, 0x80 + v}, {0x80 + v, v}, {0x80 + v, 0xFF - v}};
        const int* form = forms[i % 3];
        return Message{byte(0x80 + kind * 16 + v % 16), byte(form[0]), byte(form[1])};
    });
    expect_clean("MIDI junk: data bytes of 0x80 and above", fault, "2688 messages of every kind");
}

void MidiValidator::check_missing_status()
{
    const std::string fault = play_stream(128 * 4, messages_per_block / 4, [](std::size_t i) {
        const auto data = static_cast<int>(i % 128);
        return Message{byte(static_cast<int>(i / 4)), byte(data), byte(127 - data)};
    });
    expect_clean("MIDI junk: status bytes below 0x80", fault, "every status byte 0x00..0x7F");
}

void MidiValidator::check_foreign_events()
{
    // SysEx records with and without data, records of types no MIDI event
    // has and garbage in their bytes, each between two real controllers.
    const std::int32_t foreign_types[] = {0, 2, 3, 4, 5, 7, 99, -1, INT_MAX};
    _sysex_bytes = {char(0xF0), 0x7E, 0x7F, 0x09, 0x01, char(0xF7)};
    _sysex.assign(2, lumo::vst2::MidiSysexEvent{});
    for (std::size_t s = 0; s < _sysex.size(); ++s)
    {
        _sysex[s].type = lumo::vst2::event_types::sysex;
        _sysex[s].byte_size = sizeof(lumo::vst2::MidiSysexEvent);
        _sysex[s].delta_frames = static_cast<std::int32_t>(s * 100);
        _sysex[s].dump_bytes = s == 0 ? static_cast<std::int32_t>(_sysex_bytes.size()) : 0;
        _sysex[s].sysex_dump = s == 0 ? _sysex_bytes.data() : nullptr;
    }
    _foreign.assign(sizeof foreign_types / sizeof foreign_types[0], lumo::vst2::Event{});
    std::uniform_int_distribution<int> garbage(0, 255);
    for (std::size_t f = 0; f < _foreign.size(); ++f)
    {
        _foreign[f].type = foreign_types[f];
        _foreign[f].byte_size = garbage(_rng) - 128;
        _foreign[f].delta_frames = static_cast<std::int32_t>(f * 50);
        for (char& c : _foreign[f].data)
        {
            c = static_cast<char>(garbage(_rng));
        }
    }
    std::string fault;
    for (int round = 0; round < _options.scaled(4) && fault.empty(); ++round)
    {
        for (auto& s : _sysex)
        {
            _block.add(0, 0xB0, 7, 100);
            _block.add_raw(reinterpret_cast<lumo::vst2::Event*>(&s));
        }
        for (auto& f : _foreign)
        {
            _block.add_raw(&f);
            _block.add(f.delta_frames, 0xB1, 10, 64);
        }
        fault = play_block(block_frames);
    }
    expect_clean("MIDI junk: SysEx and unknown event types in the list", fault,
                 "2 SysEx records, 9 foreign types with garbage bytes");
}

void MidiValidator::check_offsets_outside_block()
{
    const std::int32_t offsets[] = {-1, INT_MIN, block_frames, block_frames + 1, INT_MAX};
    for (const std::int32_t at : offsets)
    {
        const Message m = random_message();
        _block.add(at, m[0], m[1], m[2]);
        _block.add(at, 0xB0, 7, 127);
    }
    std::string fault = play_block(block_frames);
    // Blocks smaller than announced are legal: the offsets of a full block do not fit them.
    for (int frames = 1; frames < 64 && fault.empty(); frames *= 3)
    {
        _block.add(frames, 0x90, 60, 100);
        _block.add(frames + 100, 0x80, 60, 0);
        fault = play_block(frames);
    }
    expect_clean("MIDI junk: deltaFrames outside the block", fault,
                 "negative, at the end, beyond, INT_MIN and INT_MAX, and in short blocks");
}

void MidiValidator::check_oversized_lists()
{
    std::string fault;
    for (int round = 0; round < _options.scaled(2) && fault.empty(); ++round)
    {
        while (!_block.is_full())
        {
            const Message m = random_message();
            _block.add(static_cast<std::int32_t>(_block.get_count() % block_frames), m[0], m[1], m[2]);
        }
        fault = play_block(block_frames);
    }
    expect_clean("MIDI junk: more than 10 000 events in one block", fault,
                 std::to_string(oversized_count) + " events per block");
}

void MidiValidator::check_broken_lists()
{
    std::string fault;
    for (const std::int32_t count : {-1, INT_MIN, -1000})
    {
        _plugin.send_events(nullptr);
        _block.add(0, 0x90, 60, 100);
        _block.use_events()->num_events = count;
        fault = play_block(block_frames);
        if (!fault.empty())
        {
            break;
        }
    }
    expect_clean("MIDI junk: a null event list and negative counts", fault, "null, -1, -1000, INT_MIN");
}

void MidiValidator::check_flood()
{
    std::string fault;
    for (int round = 0; round < _options.scaled(10) && fault.empty(); ++round)
    {
        for (int at = 0; at < block_frames; ++at)
        {
            const Message m = random_message();
            _block.add(at, m[0], m[1], m[2]);
        }
        fault = play_block(block_frames);
    }
    expect_clean("MIDI flood: an event at every sample offset", fault,
                 std::to_string(_options.scaled(10)) + " blocks of 512 random channel messages");
}

void MidiValidator::check_allocations()
{
    if (!AllocationCounter::is_supported())
    {
        _report.skip("allocations while MIDI arrives",
                     "a Windows plug-in allocates through its own runtime, which this host cannot count");
        return;
    }
    long calls = 0;
    const int blocks = _options.scaled(20);
    for (int b = 0; b < blocks; ++b)
    {
        for (std::size_t i = 0; i < messages_per_block; ++i)
        {
            const Message m = random_message();
            _block.add(static_cast<std::int32_t>(i % block_frames), m[0], m[1], m[2]);
        }
        // Delivery and processing both run on the host's audio thread.
        AllocationCounter::open();
        play_block(block_frames);
        calls += AllocationCounter::close();
    }
    _report.expect(calls == 0, "allocations while MIDI arrives",
                   std::to_string(calls) + " calls of operator new in " + std::to_string(blocks)
                       + " blocks of 1024 events");
}

void MidiValidator::check_output()
{
    if (!_plugin.sends_midi())
    {
        return;
    }
    const MidiOutCollector& sent = _plugin.use_midi_out();
    if (sent.get_total() == 0)
    {
        _report.skip("MIDI sent to the host is well formed", "the plug-in sent no events during validation");
        return;
    }
    const std::string problem = sent.describe_first_problem();
    _report.expect(problem.empty(), "MIDI sent to the host is well formed",
                   problem.empty() ? std::to_string(sent.get_total()) + " events checked"
                                   : std::to_string(sent.get_malformed()) + " of "
                                         + std::to_string(sent.get_total()) + " malformed; the first: " + problem);
}

}  // namespace vsthost
