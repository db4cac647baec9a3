#pragma once

#include "lumo/DspInterface.h"
#include "lumo/SettingMgr.h"

namespace lumo
{

// Gives an effect its settings manager and registers the framework's settings
// clients that the host adapter offers.
class SettingDspMixin : public virtual DspInterface
{
public:
    SettingMgr& use_setting_mgr() override { return _setting_mgr; }
    const SettingMgr& use_setting_mgr() const override { return _setting_mgr; }

protected:
    // Called by the effect at the end of its init(), when the setting queries
    // answer and the host service is set. 0, or the first failing step's code.
    int setup_setting_mgr();

private:
    SettingMgr _setting_mgr;
};

}  // namespace lumo
