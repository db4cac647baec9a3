#include "lumo/midi/MidiChannelState.h"

#include "basic/BigEndian.h"
#include "lumo/midi/MidiReceiverInterface.h"

#include <algorithm>
#include <cmath>

namespace lumo
{
namespace
{

constexpr std::uint32_t record_version = 1;
constexpr std::int32_t max14 = 16383;
constexpr float velocity_scale = 1.0f / 64.0f;
constexpr std::int32_t rpn_bend_range = 0;
constexpr std::int32_t rpn_fine_tuning = 1;
constexpr std::int32_t rpn_coarse_tuning = 2;

std::int32_t get_be16_signed(const std::uint8_t* p)
{
    return static_cast<std::int16_t>(basic::get_be16(p));
}

}  // namespace

int MidiChannelState::reset(MidiReceiverInterface* receiver, int channel)
{
    _receiver = receiver;
    _channel = channel;
    _on.reset();
    _held.reset();
    _released_while_held.reset();
    _nrpn_values.fill(0);
    _kind = Kind::rpn;
    _bank = 0;
    _program = 0;
    _nrpn_number = 0;
    restore_rpn_defaults();
    _bend = 0.0;
    rebuild_held();
    return 0;
}

void MidiChannelState::detach()
{
    _receiver = nullptr;
    _channel = -1;
}

void MidiChannelState::restore_rpn_defaults()
{
    _rpn_number = 0;
    _bend_range_raw = default_bend_range_raw;
    _tuning_raw = default_tuning_raw;
    recompute();
}

double MidiChannelState::from_hundredths(std::int32_t raw)
{
    return (raw % 128) * 0.01 + raw / 128;
}

void MidiChannelState::recompute()
{
    _bend_range = from_hundredths(_bend_range_raw);
    _bend_per_step = _bend_range * (1.0 / 8192.0);
    _tuning = from_hundredths(_tuning_raw) - 64.0;
}

void MidiChannelState::rebuild_held()
{
    if (_sustain)
    {
        _held.set();
    }
    else if (_sostenuto)
    {
        _held = _on;
    }
    else
    {
        _held.reset();
    }
}

void MidiChannelState::note_on(int note, int velocity, double detune)
{
    const auto n = static_cast<std::size_t>(note);
    _on.set(n);
    _released_while_held.reset(n);
    if (_receiver != nullptr)
    {
        const auto pitch = static_cast<float>(note + detune + _tuning);
        _receiver->note_on(_channel, note, pitch, 0, static_cast<float>(velocity) * velocity_scale, 1);
    }
}

void MidiChannelState::note_off(int note, int velocity, bool from_pedal)
{
    const auto n = static_cast<std::size_t>(note);
    if (_held.test(n) && !from_pedal)
    {
        // The pedal keeps the note sounding; its note-off waits for the pedal.
        _released_while_held.set(n);
        return;
    }
    _on.reset(n);
    if (_receiver != nullptr)
    {
        _receiver->note_off(_channel, note, from_pedal ? 1.0f : static_cast<float>(velocity) * velocity_scale);
    }
}

void MidiChannelState::poly_pressure(int note, int pressure)
{
    if (_receiver != nullptr)
    {
        _receiver->poly_pressure(_channel, note, static_cast<float>(pressure) * velocity_scale);
    }
}

void MidiChannelState::program_change(int number)
{
    _program = number + _bank * 128;
    if (_receiver != nullptr)
    {
        _receiver->program_change(_channel, _program);
    }
}

void MidiChannelState::pitch_bend(int lsb, int msb)
{
    _bend = ((msb - 64) * 128 + lsb) * _bend_per_step;
    if (_receiver != nullptr)
    {
        _receiver->pitch_bend(_channel, static_cast<float>(_bend));
    }
}

void MidiChannelState::filter_pedal(int controller, int value)
{
    bool* pedal = controller == 64 ? &_sustain : controller == 66 ? &_sostenuto : nullptr;
    const bool down = value >= 64;
    if (pedal == nullptr || *pedal == down)
    {
        return;
    }
    *pedal = down;
    for (int note = 0; note < nbr_notes; ++note)
    {
        const auto n = static_cast<std::size_t>(note);
        if (_released_while_held.test(n))
        {
            _released_while_held.reset(n);
            if (_on.test(n))
            {
                note_off(note, 0, true);
            }
        }
    }
    rebuild_held();
}

std::int32_t MidiChannelState::set_bits7(std::int32_t raw, bool high, int value)
{
    return high ? (raw & 0x7F) | (value << 7) : (raw & ~0x7F) | value;
}

void MidiChannelState::select_rpn_bits(bool high, int value)
{
    _kind = Kind::rpn;
    _rpn_number = set_bits7(_rpn_number, high, value);
}

void MidiChannelState::select_nrpn_bits(bool high, int value)
{
    _kind = Kind::nrpn;
    _nrpn_number = set_bits7(_nrpn_number, high, value);
}

std::int32_t MidiChannelState::get_nrpn_value(std::int32_t number) const
{
    return number >= 0 && number < nbr_nrpn_values ? _nrpn_values[static_cast<std::size_t>(number)] : 0;
}

std::int32_t MidiChannelState::enter_data(bool high, int value)
{
    if (_kind == Kind::nrpn)
    {
        if (_nrpn_number < nbr_nrpn_values)
        {
            auto& entry = _nrpn_values[static_cast<std::size_t>(_nrpn_number)];
            entry = static_cast<std::uint16_t>(set_bits7(entry, high, value));
        }
        return get_nrpn_value(_nrpn_number);
    }
    switch (_rpn_number)
    {
    case rpn_bend_range:
        _bend_range_raw = set_bits7(_bend_range_raw, high, value);
        break;
    case rpn_fine_tuning:
        _tuning_raw = set_bits7(_tuning_raw, high, value);
        break;
    case rpn_coarse_tuning:
        if (high)
        {
            _tuning_raw = value * 128;
        }
        break;
    case null_rpn:
        restore_rpn_defaults();
        break;
    default:
        break;
    }
    recompute();
    return get_rpn_value();
}

std::int32_t MidiChannelState::get_rpn_value() const
{
    switch (_rpn_number)
    {
    case rpn_bend_range:
        return _bend_range_raw;
    case rpn_fine_tuning:
        return _tuning_raw;
    case rpn_coarse_tuning:
        return _tuning_raw / 128;
    default:
        return 0;
    }
}

void MidiChannelState::set_bend_range(float semitones)
{
    // A NaN or infinite range has no whole part to store.
    if (!std::isfinite(semitones))
    {
        return;
    }
    const double whole = std::floor(semitones);
    const auto hundredths = static_cast<std::int32_t>(std::floor((semitones - whole) * 100.0));
    _bend_range_raw = ((static_cast<std::int32_t>(whole) & 0x7F) << 7) | (hundredths & 0x7F);
    recompute();
}

int MidiChannelState::read(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size < record_size)
    {
        return -1;
    }
    if (basic::get_be32(data) == 0)
    {
        return 0;
    }
    _program = static_cast<std::int32_t>(basic::get_be32(data + 8));
    _bank = std::clamp(get_be16_signed(data + 12), 0, max14);
    _sustain = data[14] != 0;
    _sostenuto = data[15] != 0;
    _rpn_number = std::clamp(get_be16_signed(data + 16), 0, max14);
    _nrpn_number = std::clamp(get_be16_signed(data + 18), 0, max14);
    _tuning_raw = get_be16_signed(data + 20);
    _bend_range_raw = std::clamp(get_be16_signed(data + 22), 0, max14);
    const float bend = basic::get_be_float(data + 24);
    // We only ever store finite bends; a NaN from a foreign chunk would reach
    // every pitch computed from this channel.
    _bend = std::isfinite(bend) ? bend : 0.0;
    recompute();
    rebuild_held();
    if (_receiver != nullptr)
    {
        _receiver->pitch_bend(_channel, static_cast<float>(_bend));
    }
    return 0;
}

int MidiChannelState::write(std::uint8_t* data, std::size_t capacity) const
{
    if (data == nullptr || capacity < record_size)
    {
        return -1;
    }
    basic::set_be32(data, record_version);
    basic::set_be32(data + 4, static_cast<std::uint32_t>(_channel));
    basic::set_be32(data + 8, static_cast<std::uint32_t>(_program));
    basic::set_be16(data + 12, static_cast<std::uint16_t>(_bank));
    data[14] = _sustain ? 1 : 0;
    data[15] = _sostenuto ? 1 : 0;
    basic::set_be16(data + 16, static_cast<std::uint16_t>(_rpn_number));
    basic::set_be16(data + 18, static_cast<std::uint16_t>(_nrpn_number));
    basic::set_be16(data + 20, static_cast<std::uint16_t>(_tuning_raw));
    basic::set_be16(data + 22, static_cast<std::uint16_t>(_bend_range_raw));
    basic::set_be_float(data + 24, static_cast<float>(_bend));
    return 0;
}

}  // namespace lumo
