// The editor through the whole plug-in as a Linux host drives it, in the
// host's X11 window on a virtual server. What the editor does with input is
// the toolkit's and the editor's tests' business; a missing display or host
// window, a dying server, the idle rate and the host's window left as it was
// are the X11 window's (and the LV2 editor's); the real library's size,
// pictures, drag, switch, zoom and many open/close rounds of two instances
// are the host tool's end-to-end runs. Here is what only a host that breaks
// the rules does.
#include <gtest/gtest.h>

#include "PluginFixture.h"

#include "gadu/x11/ConnectionX11.h"
#include "sys/ResourceTable.h"
#include "tests/sys/ScratchKeyStorePosix.h"
#include "tests/zarquette/gui/X11EditorHost.h"

namespace
{

using lumo::vst2::PluginOp;

// The plug-in reads and writes the per-user key store as it starts: every
// test of this program uses a scratch one, never the user's.
::testing::Environment* const scratch_store = ::testing::AddGlobalTestEnvironment(new zq_test::ScratchKeyStore);

class EditorHosting : public PluginFixture, protected zq_test::X11EditorHost
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE(server.get_name().empty()) << "Xvfb did not start";
        errors_before = gadu::ConnectionX11::get_unexpected_error_count();
        PluginFixture::SetUp();
    }

    void TearDown() override
    {
        PluginFixture::TearDown();
        EXPECT_EQ(gadu_test::HostX11::errors, 0);
        EXPECT_EQ(gadu::ConnectionX11::get_unexpected_error_count(), errors_before);
    }

    std::uint32_t errors_before = 0;
};

// Many rounds of two instances are the host tool's editor-stress test.
TEST_F(EditorHosting, AMissingWindowTwoInstancesAtOnceAndAHostThatForgetsToClose)
{
    FakeHost other_host;
    lumo::vst2::AEffect* other = other_host.open_plugin();
    ASSERT_NE(other, nullptr);
    // A window that does not exist is refused, and the next open works.
    EXPECT_EQ(dispatch(PluginOp::edit_open, 0, 0, reinterpret_cast<void*>(std::uintptr_t{0x3FFFFF})), 0);
    ASSERT_EQ(dispatch(PluginOp::edit_open, 0, 0, parent_handle()), 1);
    ASSERT_EQ(FakeHost::dispatch(other, PluginOp::edit_open, 0, 0, parent_handle()), 1);
    FakeHost::dispatch(other, PluginOp::edit_idle);
    // A host that forgets to close the editor before it deletes the plug-in.
    FakeHost::close_plugin(other);
    dispatch(PluginOp::edit_idle);
    dispatch(PluginOp::edit_close);
}

// A plug-in whose artwork is broken: the editor's error stops at the entry
// point, and the host gets no plug-in instead of an exception or a crash.
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

}  // namespace
