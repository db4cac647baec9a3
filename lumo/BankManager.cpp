#include "lumo/BankManager.h"

#include "basic/BigEndian.h"

#include <algorithm>

namespace lumo
{

BankManager::BankManager() : _programs(1)
{
}

int BankManager::read(const std::uint8_t* data, std::size_t size)
{
    if (data == nullptr || size < header_size)
    {
        return -1;
    }
    const auto count = static_cast<std::int32_t>(basic::get_be32(data));
    const std::size_t record = basic::get_be32(data + 4);
    // A record shorter than a program's header cannot hold a program; checking
    // it first also keeps a huge count from dividing by a tiny record size.
    if (count < 1 || record < ProgramSlot::header_size ||
        record > (size - header_size) / static_cast<std::size_t>(count))
    {
        return -1;
    }
    // Programs are read into a new list, which replaces the bank only when
    // every record was good.
    std::vector<ProgramSlot> programs;
    for (std::int32_t i = 0; i < count; ++i)
    {
        ProgramSlot program;
        if (program.read(data + header_size + record * static_cast<std::size_t>(i), record) != 0 ||
            (i > 0 && !program.has_same_shape(programs.front())))
        {
            return -1;
        }
        programs.push_back(program);
    }
    _programs.swap(programs);
    return 0;
}

int BankManager::write(std::uint8_t* data, std::size_t capacity) const
{
    if (data == nullptr || capacity < get_size())
    {
        return -1;
    }
    const std::size_t record = _programs.front().get_size();
    basic::set_be32(data, static_cast<std::uint32_t>(_programs.size()));
    basic::set_be32(data + 4, static_cast<std::uint32_t>(record));
    std::uint8_t* pos = data + header_size;
    for (const ProgramSlot& program : _programs)
    {
        program.write(pos, record);
        pos += record;
    }
    return 0;
}

std::size_t BankManager::get_size() const
{
    return header_size + _programs.size() * _programs.front().get_size();
}

void BankManager::set_nbr_programs(int count)
{
    ProgramSlot fresh = _programs.front();
    fresh.clear();
    _programs.resize(static_cast<std::size_t>(std::max(count, 1)), fresh);
}

const ProgramSlot& BankManager::use_program(int index) const
{
    return _programs[static_cast<std::size_t>(std::clamp(index, 0, get_nbr_programs() - 1))];
}

int BankManager::set_program(int index, const ProgramSlot& program)
{
    if (!is_index(index))
    {
        return -1;
    }
    const ProgramSlot& other = _programs[index == 0 ? _programs.size() - 1 : 0];
    if (_programs.size() > 1 && !program.has_same_shape(other))
    {
        return -1;
    }
    _programs[static_cast<std::size_t>(index)] = program;
    return 0;
}

int BankManager::set_program_name(int index, const char* name)
{
    if (!is_index(index))
    {
        return -1;
    }
    _programs[static_cast<std::size_t>(index)].set_name(name);
    return 0;
}

bool BankManager::is_index(int index) const
{
    return index >= 0 && index < get_nbr_programs();
}

}  // namespace lumo
