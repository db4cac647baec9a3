#include "lumo/ParamReorder.h"

#include "basic/ConfKeyContentMulti.h"
#include "basic/ConfKeyContentString.h"
#include "basic/ConfKeyData.h"
#include "basic/ConfKeyMulti.h"
#include "lumo/DspInterface.h"
#include "lumo/NormalizedParamInterface.h"

#include <cstdio>
#include <cstdlib>
#include <numeric>

namespace lumo
{

namespace
{

int map_index(const std::vector<int>& map, int index)
{
    return index >= 0 && index < static_cast<int>(map.size()) ? map[static_cast<std::size_t>(index)] : index;
}

}  // namespace

void ParamReorder::setup(DspInterface& dsp)
{
    _dsp = &dsp;
    _count = dsp.get_nbr_param();
    _internal_to_host.resize(static_cast<std::size_t>(_count));
    std::iota(_internal_to_host.begin(), _internal_to_host.end(), 0);
    _host_to_internal = _internal_to_host;
}

int ParamReorder::get_host_index(int internal) const
{
    return map_index(_internal_to_host, internal);
}

int ParamReorder::get_internal_index(int host) const
{
    return map_index(_host_to_internal, host);
}

int ParamReorder::save_settings(basic::ConfKeyMulti& root)
{
    basic::ConfKeyContentMulti list;
    for (int host = 0; host < _count; ++host)
    {
        list.add_elt(basic::ConfKeyContentString(make_element(get_internal_index(host))));
    }
    basic::ConfKeyData key(key_name);
    key.set_content(list);
    root.add_key(key);
    return 0;
}

// "<index>_<name>" with every character that cannot stand in a key name
// replaced, as in 3_Nuclear_Power.
std::string ParamReorder::make_element(int internal) const
{
    char text[256];
    const int len = std::snprintf(text, sizeof(text), "%d_", internal);
    _dsp->use_param(internal).get_name(text + len, static_cast<int>(sizeof(text)) - len);
    return basic::ConfKeyInterface::make_valid_name(text);
}

int ParamReorder::load_settings(const basic::ConfKeyMulti& root)
{
    const int pos = root.find_key_data(key_name);
    const auto* list = pos < 0 ? nullptr
                               : dynamic_cast<const basic::ConfKeyContentMulti*>(
                                     &static_cast<const basic::ConfKeyData&>(root.use_key(pos)).use_content());
    if (list == nullptr)
    {
        return 0;
    }
    std::vector<int> to_host(static_cast<std::size_t>(_count), -1);
    std::vector<int> to_internal(static_cast<std::size_t>(_count), -1);
    const int used = std::min(list->get_nbr_elt(), _count);
    for (int host = 0; host < used; ++host)
    {
        const auto* elt = dynamic_cast<const basic::ConfKeyContentString*>(&list->use_elt(host));
        if (elt != nullptr)
        {
            take_element(elt->get_string(), host, to_host, to_internal);
        }
    }
    fill_gaps(to_host, to_internal);
    _internal_to_host.swap(to_host);
    _host_to_internal.swap(to_internal);
    return 0;
}

// Host index host shows the internal index the element begins with, when that
// is a parameter that no earlier element took.
void ParamReorder::take_element(const std::string& element, int host, std::vector<int>& to_host,
                                std::vector<int>& to_internal) const
{
    const char* begin = element.c_str();
    char* end = nullptr;
    const long internal = std::strtol(begin, &end, 10);
    if (end == begin || internal < 0 || internal >= _count || to_host[static_cast<std::size_t>(internal)] >= 0)
    {
        return;
    }
    to_host[static_cast<std::size_t>(internal)] = host;
    to_internal[static_cast<std::size_t>(host)] = static_cast<int>(internal);
}

// First every free host index whose own internal index is free keeps it, then
// the remaining host indexes take the remaining internal indexes in order.
void ParamReorder::fill_gaps(std::vector<int>& to_host, std::vector<int>& to_internal) const
{
    for (std::size_t k = 0; k < to_host.size(); ++k)
    {
        if (to_internal[k] < 0 && to_host[k] < 0)
        {
            to_internal[k] = static_cast<int>(k);
            to_host[k] = static_cast<int>(k);
        }
    }
    std::size_t next = 0;
    for (std::size_t host = 0; host < to_internal.size(); ++host)
    {
        if (to_internal[host] >= 0)
        {
            continue;
        }
        while (to_host[next] >= 0)
        {
            ++next;
        }
        to_internal[host] = static_cast<int>(next);
        to_host[next] = static_cast<int>(host);
        ++next;
    }
}

}  // namespace lumo
