#include "TestGain.h"

#include <new>

#if defined(_WIN32)
// Exported through TestGain.def, also under the name "main".
#define TESTGAIN_EXPORT
#else
#define TESTGAIN_EXPORT __attribute__((visibility("default")))
#endif

extern "C" TESTGAIN_EXPORT lumo::vst2::AEffect* LUMO_VST2_CALL VSTPluginMain(lumo::vst2::HostCallback host)
{
    if (host == nullptr || host(nullptr, static_cast<std::int32_t>(lumo::vst2::HostOp::version), 0, 0, nullptr, 0.0f) == 0)
    {
        return nullptr;
    }
    auto* plugin = new (std::nothrow) testgain::TestGain(host);
    return plugin != nullptr ? plugin->use_effect() : nullptr;
}
