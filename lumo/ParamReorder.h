#pragma once

#include "basic/SettingClientInterface.h"

#include <string>
#include <vector>

namespace lumo
{

class DspInterface;

// The order in which the host sees the parameters. Internal indexes are the
// effect's registration order; host index h shows internal index
// get_internal_index(h). Without a map the order is the identity.
//
// Settings key: "parameter_reorder_map" = { 0_Tempo 1_Bof ... }, one element
// per host index, each the internal index and the parameter's name (only the
// number counts when reading).
class ParamReorder : public basic::SettingClientInterface
{
public:
    static constexpr const char* key_name = "parameter_reorder_map";

    // Identity for the audio side's parameters.
    void setup(DspInterface& dsp);

    // Indexes outside 0 .. count - 1 map to themselves.
    int get_host_index(int internal) const;
    int get_internal_index(int host) const;

    int save_settings(basic::ConfKeyMulti& root) override;
    // Always 0: bad, repeated and out-of-range elements are dropped and their
    // places filled, so the result is always a permutation.
    int load_settings(const basic::ConfKeyMulti& root) override;

private:
    std::string make_element(int internal) const;
    void take_element(const std::string& element, int host, std::vector<int>& to_host,
                      std::vector<int>& to_internal) const;
    void fill_gaps(std::vector<int>& to_host, std::vector<int>& to_internal) const;

    DspInterface* _dsp = nullptr;
    int _count = 0;
    std::vector<int> _internal_to_host;
    std::vector<int> _host_to_internal;
};

}  // namespace lumo
