// A plug-in whose artwork is broken: the editor's error stops at the entry
// point, and the host gets no plug-in instead of an exception or a crash.
#include "FakeHost.h"

#include "sys/ResourceTable.h"

#include <gtest/gtest.h>

TEST(BrokenArtworkPlugin, TheHostGetsNothingAndNothingEscapes)
{
    const std::uint8_t garbage[] = {0, 1, 2, 3, 4, 5, 6, 7};
    FakeHost host;
    {
        const sys::ResourceTable::Entry broken[] = {{"APIC", "bkg", garbage, sizeof garbage}};
        const sys::ResourceTable shadow(broken, 1);
        EXPECT_EQ(host.open_plugin(), nullptr);
    }
    lumo::vst2::AEffect* effect = host.open_plugin();
    ASSERT_NE(effect, nullptr);
    FakeHost::close_plugin(effect);
}
