#pragma once

#include "basic/SerializableInterface.h"
#include "lumo/ProgramSlot.h"

#include <vector>

namespace lumo
{

// The ordered programs the host sees. A bank always holds at least one
// program, and all its programs have the same shape (value count and extra
// byte count), so one record size serves them all.
//
// Record (big-endian): program count c (4 bytes), record size r (4 bytes),
// then the c program records, program i at 8 + i * r.
class BankManager : public basic::SerializableInterface
{
public:
    static constexpr std::size_t header_size = 8;

    // One new program.
    BankManager();
    BankManager(const BankManager& other) = default;
    BankManager& operator=(const BankManager& other) = default;
    ~BankManager() override = default;

    // Refused (nothing changes) when the count is below 1, the records would
    // run past size, a program does not fit its record or the programs differ
    // in shape.
    int read(const std::uint8_t* data, std::size_t size) override;
    int write(std::uint8_t* data, std::size_t capacity) const override;
    std::size_t get_size() const override;

    int get_nbr_programs() const { return static_cast<int>(_programs.size()); }
    // At least one program stays. New programs are new programs of the bank's
    // shape; surplus ones go from the end.
    void set_nbr_programs(int count);
    // An index out of range gives the nearest program.
    const ProgramSlot& use_program(int index) const;
    // Stores a copy: 0, or -1 (nothing changes) for an index out of range or a
    // program whose shape differs from the bank's other programs.
    int set_program(int index, const ProgramSlot& program);
    // 0, or -1 for an index out of range.
    int set_program_name(int index, const char* name);

private:
    bool is_index(int index) const;

    std::vector<ProgramSlot> _programs;
};

}  // namespace lumo
