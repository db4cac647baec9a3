#include "lumo/lv2/Lv2LearnMessage.h"

#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2BindingRecord.h"
#include "lumo/lv2/Lv2Urids.h"
#include "lumo/midi/MidiControlMap.h"
#include "lumo/midi/MidiMgr.h"

#include <cmath>
#include <cstdint>
#include <limits>

namespace lumo
{
namespace
{

std::uint32_t request_type(const Lv2Urids& urids, Lv2LearnMessage::Request request)
{
    switch (request)
    {
    case Lv2LearnMessage::Request::start:
        return urids.learn_start;
    case Lv2LearnMessage::Request::cancel:
        return urids.learn_cancel;
    case Lv2LearnMessage::Request::forget:
        return urids.learn_forget;
    case Lv2LearnMessage::Request::get_bindings:
        break;
    }
    return urids.bindings_get;
}

// A whole number from lowest to highest, as the object holds it.
bool find_whole(const Lv2AtomObject& object, std::uint32_t key, double lowest, double highest, double& value)
{
    return object.find_number(key, value) && value >= lowest && value <= highest && std::floor(value) == value;
}

}  // namespace

bool Lv2LearnMessage::write_request(LV2_Atom_Forge& forge, const Lv2Urids& urids, Request request, int param)
{
    LV2_Atom_Forge_Frame frame;
    if (lv2_atom_forge_object(&forge, &frame, 0, request_type(urids, request)) == 0)
    {
        return false;
    }
    const bool written = request == Request::get_bindings
                      || (lv2_atom_forge_key(&forge, urids.learn_parameter) != 0
                          && lv2_atom_forge_int(&forge, param) != 0);
    lv2_atom_forge_pop(&forge, &frame);
    return written;
}

bool Lv2LearnMessage::write_bindings(LV2_Atom_Forge& forge, const Lv2Urids& urids, const MidiMgr& mgr)
{
    std::uint8_t record[Lv2BindingRecord::max_size];
    const auto size = static_cast<std::uint32_t>(Lv2BindingRecord::write_to(mgr, record));
    LV2_Atom_Forge_Frame frame;
    if (lv2_atom_forge_object(&forge, &frame, 0, urids.bindings) == 0)
    {
        return false;
    }
    const bool written = lv2_atom_forge_key(&forge, urids.pending_learn) != 0
                      && lv2_atom_forge_int(&forge, mgr.get_pending_learn()) != 0
                      && lv2_atom_forge_key(&forge, urids.learn_count) != 0
                      && lv2_atom_forge_int(&forge, static_cast<std::int32_t>(mgr.get_learn_count())) != 0
                      && lv2_atom_forge_key(&forge, urids.state_bindings) != 0
                      && lv2_atom_forge_atom(&forge, size, urids.atom_chunk) != 0
                      && lv2_atom_forge_write(&forge, record, size) != 0;
    lv2_atom_forge_pop(&forge, &frame);
    return written;
}

bool Lv2LearnMessage::read_request(const Lv2AtomObject& object, const Lv2Urids& urids, Request& request, int& param)
{
    if (object.is_a(urids.bindings_get))
    {
        request = Request::get_bindings;
        param = -1;
        return true;
    }
    Request found = Request::start;
    if (object.is_a(urids.learn_cancel))
    {
        found = Request::cancel;
    }
    else if (object.is_a(urids.learn_forget))
    {
        found = Request::forget;
    }
    else if (!object.is_a(urids.learn_start))
    {
        return false;
    }
    double index = 0.0;
    if (!find_whole(object, urids.learn_parameter, 0.0, MidiControlMap::capacity - 1, index))
    {
        return false;
    }
    request = found;
    param = static_cast<int>(index);
    return true;
}

bool Lv2LearnMessage::read_bindings(const Lv2AtomObject& object, const Lv2Urids& urids, Bindings& bindings)
{
    double pending = 0.0;
    double count = 0.0;
    const std::uint8_t* record = nullptr;
    std::uint32_t size = 0;
    std::vector<std::int32_t> ids;
    // The count travels as an Int: whatever its sign, its bits are the count.
    if (!object.is_a(urids.bindings)
        || !find_whole(object, urids.pending_learn, -1.0, MidiControlMap::capacity - 1, pending)
        || !find_whole(object, urids.learn_count, std::numeric_limits<std::int32_t>::min(),
                       std::numeric_limits<std::int32_t>::max(), count)
        || !object.find_chunk(urids.state_bindings, record, size) || !Lv2BindingRecord::read(record, size, ids))
    {
        return false;
    }
    bindings.pending_learn = static_cast<int>(pending);
    bindings.learn_count = static_cast<std::uint32_t>(static_cast<std::int32_t>(count));
    bindings.ids.swap(ids);
    return true;
}

}  // namespace lumo
