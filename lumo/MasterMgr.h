#pragma once

namespace lumo
{

class DspInterface;
class HostGuiInterface;
class MetaControl;

// Editor-side record of what the editor's screen is wired to. Nothing owned.
class MasterMgr
{
public:
    virtual ~MasterMgr() = default;

    HostGuiInterface* host = nullptr;
    MetaControl* meta_controls = nullptr;  // one per parameter
    void* reserved = nullptr;
    DspInterface* dsp = nullptr;
};

}  // namespace lumo
