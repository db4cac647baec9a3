#include "lumo/EditorZoom.h"

#include "sys/PersistentKeyList.h"
#include "tests/basic/ScratchDir.h"
#include "tests/sys/ScratchKeys.h"

#include <gtest/gtest.h>

namespace
{

TEST(EditorZoom, TheUsersZoomIsTakenOtherTextsGiveOneAndStayAsWritten)
{
    // A plug-in name of its own for each run: under wine the key store is the
    // prefix's registry, which outlives the test program.
    const std::string plugin = "ZoomTest " + zq_test::ScratchDir::make_unique_suffix();
    zq_test::ScratchKeys::add("Velnor/" + plugin);
    // A plug-in whose key does not exist yet.
    EXPECT_EQ(lumo::EditorZoom::read(plugin), 1);
    sys::PersistentKeyList key("Velnor/" + plugin, false);
    std::string text;
    ASSERT_EQ(key.get_string("Editor Zoom", text), 0);
    EXPECT_EQ(text, "1");
    for (const auto& [written, zoom] : std::vector<std::pair<std::string, int>>{
             {"2", 2}, {"3", 3}, {"1", 1}, {"0", 1}, {"4", 1}, {"2.0", 1}, {" 2", 1}, {"", 1}, {"-2", 1}})
    {
        key.set_string("Editor Zoom", written);
        EXPECT_EQ(lumo::EditorZoom::read(plugin), zoom) << written;
        key.get_string("Editor Zoom", text);
        EXPECT_EQ(text, written);
    }
}

}  // namespace
