#include "tests/lumo/lv2/Lv2TestAtoms.h"

#include "lumo/lv2/Lv2AtomObject.h"
#include "lumo/lv2/Lv2LearnMirror.h"
#include "lumo/lv2/Lv2Urids.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace
{

using Request = lumo::Lv2LearnMessage::Request;
using Sent = std::vector<std::pair<Request, int>>;

// The editor's end: the audio side's report settles the mirror, and what
// the editor does to the mirror goes back as requests, each once.
class Lv2LearnMirror : public ::testing::Test
{
protected:
    Lv2LearnMirror()
    {
        urids.map_all(map.use(), "urn:test");
        lv2_atom_forge_init(&forge, const_cast<LV2_URID_Map*>(map.use()));
    }
    // The audio side's report of source, as it arrives.
    bool report(const lumo::MidiMgr& source)
    {
        alignas(8) std::uint8_t buffer[2048];
        lv2_atom_forge_set_buffer(&forge, buffer, sizeof(buffer));
        EXPECT_TRUE(lumo::Lv2LearnMessage::write_bindings(forge, urids, source));
        const auto* atom = reinterpret_cast<const LV2_Atom*>(buffer);
        const std::uint8_t* body = buffer + sizeof(LV2_Atom);
        return take(atom->type, std::vector<std::uint8_t>(body, body + atom->size));
    }
    bool take(std::uint32_t type, const std::vector<std::uint8_t>& body)
    {
        lumo::Lv2Event event;
        event.type = type;
        event.size = static_cast<std::uint32_t>(body.size());
        event.body = body.data();
        return mirror.take(lumo::Lv2AtomObject(event, urids), urids);
    }
    Sent changes()
    {
        Sent sent;
        mirror.send_changes([&sent](Request request, int param) { sent.emplace_back(request, param); });
        return sent;
    }

    zq_test::UridMap map;
    lumo::Lv2Urids urids;
    LV2_Atom_Forge forge{};
    lumo::Lv2LearnMirror mirror;
};

TEST_F(Lv2LearnMirror, AReportSettlesTheMirrorAndTheEditorsChangesBecomeRequests)
{
    lumo::MidiMgr source;
    source.bind(0, 7, 0);
    source.bind(1, 99, 1);
    source.set_pending_learn(1);
    source.set_learn_count(3);
    ASSERT_TRUE(report(source));
    lumo::MidiMgr& mgr = mirror.use_mgr();
    EXPECT_EQ(mgr.get_id(0), 7 << 16);
    EXPECT_EQ(mgr.get_id(1), (99 << 16) + 1);
    EXPECT_EQ(mgr.get_pending_learn(), 1);
    EXPECT_EQ(mgr.get_learn_count(), 3u);
    EXPECT_TRUE(changes().empty());

    mgr.set_pending_learn(0);
    EXPECT_EQ(changes(), (Sent{{Request::start, 0}}));
    mgr.set_pending_learn(-1);
    mgr.unbind(0);
    EXPECT_EQ(changes(), (Sent{{Request::cancel, 0}, {Request::forget, 0}}));
    EXPECT_TRUE(changes().empty());

    // Anything but a report leaves the mirror as it is.
    EXPECT_FALSE(take(map.id(LV2_ATOM__Object), zq_test::ObjectBytes(urids.learn_start).bytes));
    EXPECT_EQ(mgr.get_id(1), (99 << 16) + 1);
}

}  // namespace
