#include "lumo/lv2/Lv2State.h"

#include "lumo/lv2/Lv2BindingRecord.h"
#include "lumo/lv2/Lv2Log.h"
#include "lumo/lv2/Lv2Urids.h"

#include <utility>

namespace lumo
{
namespace
{

constexpr std::uint32_t store_flags = LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE;
constexpr const char* program_what = "program";
constexpr const char* bindings_what = "MIDI bindings";

}  // namespace

Lv2State::Lv2State(const Lv2Urids& urids, const Lv2Log& log, std::string plugin_name)
    : _urids(urids), _log(log), _plugin_name(std::move(plugin_name))
{
}

LV2_State_Status Lv2State::save(LV2_State_Store_Function store, LV2_State_Handle handle, const ProgramSlot& program,
                                const MidiMgr* mgr) const
{
    if (store == nullptr || !_urids.is_mapped())
    {
        return LV2_STATE_ERR_NO_FEATURE;
    }
    std::vector<std::uint8_t> record(program.get_size());
    program.write(record.data(), record.size());
    LV2_State_Status status =
        store(handle, _urids.state_program, record.data(), record.size(), _urids.atom_chunk, store_flags);
    if (status == LV2_STATE_SUCCESS && mgr != nullptr)
    {
        record = Lv2BindingRecord::write(*mgr);
        status = store(handle, _urids.state_bindings, record.data(), record.size(), _urids.atom_chunk, store_flags);
    }
    return status;
}

LV2_State_Status Lv2State::restore(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                                   const ProgramSlot& shape, Found& found) const
{
    found = Found{};
    if (retrieve == nullptr || !_urids.is_mapped())
    {
        return LV2_STATE_ERR_NO_FEATURE;
    }
    LV2_State_Status status = LV2_STATE_SUCCESS;
    std::size_t size = 0;
    Found checked;
    if (const std::uint8_t* data =
            retrieve_chunk(retrieve, handle, _urids.state_program, program_what, size, status))
    {
        ProgramSlot program = shape;
        // A record must be exactly one program of this plug-in's shape: a
        // program of another plug-in has another number of values.
        if (program.read(data, size) != 0 || program.get_size() != size || !program.has_same_shape(shape))
        {
            return refuse(program_what, "it is not a program of this plug-in");
        }
        checked.program = program;
    }
    if (status != LV2_STATE_SUCCESS)
    {
        return status;
    }
    if (const std::uint8_t* data =
            retrieve_chunk(retrieve, handle, _urids.state_bindings, bindings_what, size, status))
    {
        std::vector<std::int32_t> ids;
        if (!Lv2BindingRecord::read(data, size, ids))
        {
            return refuse(bindings_what, "the record is malformed");
        }
        checked.bindings = std::move(ids);
    }
    if (status == LV2_STATE_SUCCESS)
    {
        found = std::move(checked);
    }
    return status;
}

const std::uint8_t* Lv2State::retrieve_chunk(LV2_State_Retrieve_Function retrieve, LV2_State_Handle handle,
                                             std::uint32_t key, const char* what, std::size_t& size,
                                             LV2_State_Status& status) const
{
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    size = 0;
    const void* data = retrieve(handle, key, &size, &type, &flags);
    if (data == nullptr)
    {
        return nullptr;
    }
    if (type != _urids.atom_chunk)
    {
        status = refuse(what, "it is not a chunk of bytes");
        return nullptr;
    }
    return static_cast<const std::uint8_t*>(data);
}

LV2_State_Status Lv2State::refuse(const char* what, const char* why) const
{
    _log.error("%s: the saved %s was refused (%s); the state was not restored.\n", _plugin_name.c_str(), what, why);
    return LV2_STATE_ERR_BAD_TYPE;
}

}  // namespace lumo
