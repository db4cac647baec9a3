#pragma once

#include "basic/SerializableInterface.h"

#include <array>
#include <bitset>
#include <cstdint>

namespace lumo
{

class MidiReceiverInterface;

// What one MIDI channel remembers between messages: sounding and pedal-held
// notes, the pedals, program and bank, the selected RPN or NRPN with their
// values, pitch-bend range and tuning. Raw 14-bit values use the hundredths
// convention: whole semitones in the high 7 bits, hundredths in the low 7.
// Everything is fixed-size, so parsing on the audio thread never allocates.
class MidiChannelState : public basic::SerializableInterface
{
public:
    static constexpr int nbr_notes = 128;
    static constexpr int nbr_nrpn_values = 2048;
    static constexpr int record_size = 28;
    static constexpr std::int32_t default_bend_range_raw = 256;
    static constexpr std::int32_t default_tuning_raw = 8192;
    static constexpr std::int32_t null_rpn = 16383;

    enum class Kind : std::int32_t
    {
        rpn = 0,
        nrpn = 1
    };

    MidiChannelState() { recompute(); }

    // Attaches the receiver and returns to the defaults; the pedals stay down
    // or up as they were. Always 0.
    int reset(MidiReceiverInterface* receiver, int channel);
    void detach();

    MidiReceiverInterface* use_receiver() const { return _receiver; }
    int get_channel() const { return _channel; }

    // The message handlers of the input; velocities are 7-bit MIDI values.
    void note_on(int note, int velocity, double detune);
    void note_off(int note, int velocity, bool from_pedal = false);
    void poly_pressure(int note, int pressure);
    void program_change(int number);
    void pitch_bend(int lsb, int msb);
    // Sustain (64) and sostenuto (66): sends deferred note-offs when a pedal
    // changes. Other controllers are ignored.
    void filter_pedal(int controller, int value);

    // Parameter-number selection by controllers 98 to 101: high or low 7 bits.
    void select_rpn_bits(bool high, int value);
    void select_nrpn_bits(bool high, int value);
    // Data entry (controller 6: high, 38: low) on the selected RPN or NRPN;
    // returns the value to report.
    std::int32_t enter_data(bool high, int value);

    Kind get_selected_kind() const { return _kind; }
    std::int32_t get_rpn_number() const { return _rpn_number; }
    std::int32_t get_nrpn_number() const { return _nrpn_number; }
    std::int32_t get_nrpn_value(std::int32_t number) const;
    std::int32_t get_bank() const { return _bank; }
    std::int32_t get_program() const { return _program; }
    std::int32_t get_bend_range_raw() const { return _bend_range_raw; }
    std::int32_t get_tuning_raw() const { return _tuning_raw; }
    double get_bend() const { return _bend; }
    double get_bend_range() const { return _bend_range; }
    double get_tuning() const { return _tuning; }
    bool is_note_on(int note) const { return _on.test(static_cast<std::size_t>(note)); }
    bool is_held(int note) const { return _held.test(static_cast<std::size_t>(note)); }
    bool is_sustain_down() const { return _sustain; }
    bool is_sostenuto_down() const { return _sostenuto; }

    // Sets the bend range raw value from semitones (whole and hundredths).
    void set_bend_range(float semitones);

    // basic::SerializableInterface: the 28-byte big-endian record.
    int read(const std::uint8_t* data, std::size_t size) override;
    int write(std::uint8_t* data, std::size_t capacity) const override;
    std::size_t get_size() const override { return record_size; }

private:
    static std::int32_t set_bits7(std::int32_t raw, bool high, int value);
    static double from_hundredths(std::int32_t raw);
    void recompute();
    void rebuild_held();
    void restore_rpn_defaults();
    std::int32_t get_rpn_value() const;

    MidiReceiverInterface* _receiver = nullptr;
    std::int32_t _channel = -1;
    std::bitset<nbr_notes> _on;
    std::bitset<nbr_notes> _held;
    std::bitset<nbr_notes> _released_while_held;
    bool _sustain = false;
    bool _sostenuto = false;
    Kind _kind = Kind::rpn;
    std::int32_t _bank = 0;
    std::int32_t _program = 0;
    std::int32_t _rpn_number = 0;
    std::int32_t _bend_range_raw = default_bend_range_raw;
    std::int32_t _tuning_raw = default_tuning_raw;
    std::int32_t _nrpn_number = 0;
    std::array<std::uint16_t, nbr_nrpn_values> _nrpn_values{};
    double _bend = 0.0;
    double _bend_range = 0.0;
    double _bend_per_step = 0.0;
    double _tuning = 0.0;
};

}  // namespace lumo
