#include "lumo/SettingDspMixin.h"

#include "lumo/HostDspInterface.h"
#include "lumo/ParamReorder.h"

namespace lumo
{

int SettingDspMixin::setup_setting_mgr()
{
    const int err = _setting_mgr.setup(*this);
    HostDspInterface* host = use_host();
    if (err != 0 || host == nullptr)
    {
        return err;
    }
    if (basic::SettingClientInterface* midi = host->use_midi_setting_client())
    {
        const int midi_err = _setting_mgr.add_client(*midi);
        if (midi_err != 0)
        {
            return midi_err;
        }
    }
    return _setting_mgr.add_client(host->use_param_reorder());
}

}  // namespace lumo
