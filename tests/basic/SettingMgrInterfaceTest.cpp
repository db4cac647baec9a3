#include "basic/ConfKeyMulti.h"
#include "basic/SettingClientInterface.h"
#include "basic/SettingMgrInterface.h"
#include "tests/basic/ScratchDir.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace
{

using basic::ConfKeyMulti;
using basic::SettingMgrInterface;

// Records what it saw; answers a chosen code.
class RecordingClient : public basic::SettingClientInterface
{
public:
    RecordingClient(std::vector<std::string>& log, const std::string& id, int answer = 0)
        : log(log), id(id), answer(answer)
    {
    }
    int save_settings(ConfKeyMulti& /*root*/) override { return 0; }
    int load_settings(const ConfKeyMulti& root) override
    {
        log.push_back(id + ":" + root.get_name() + ":" + std::to_string(root.get_nbr_keys()));
        return answer;
    }

    std::vector<std::string>& log;
    std::string id;
    int answer;
};

// Records the status each hook sees; the first hook sets its own.
class HookedMgr : public SettingMgrInterface
{
public:
    explicit HookedMgr(std::vector<std::string>& log) : log(log) {}
    void before_load(const ConfKeyMulti& /*root*/, const std::string& /*path*/, int& status) override
    {
        log.push_back("before:" + std::to_string(status));
        status = before_status;
    }
    void after_load(const ConfKeyMulti& /*root*/, const std::string& /*path*/, int& status) override
    {
        log.push_back("after:" + std::to_string(status));
    }

    std::vector<std::string>& log;
    int before_status = 0;
};

class SettingMgrInterfaceTest : public ::testing::Test
{
protected:
    std::vector<std::string> log;
    HookedMgr mgr{log};
    zq_test::ScratchDir dir;
};

// Clients load in the order they registered; the first failure, of a client
// or of a hook, stops the clients after it and reaches the caller.
TEST_F(SettingMgrInterfaceTest, ClientsLoadInOrderUntilOneOrAHookRefuses)
{
    RecordingClient first(log, "first");
    RecordingClient failing(log, "failing", -7);
    RecordingClient later(log, "later");
    EXPECT_EQ(mgr.add_client(first), 0);
    EXPECT_EQ(mgr.add_client(failing), 0);
    EXPECT_EQ(mgr.add_client(first), SettingMgrInterface::err_client_twice);
    mgr.add_client(later);

    const std::string path = dir.write_file("a.cfg", "top = { version = 1.12 other = { x = 1 } }");
    EXPECT_EQ(mgr.load(path), -7);
    EXPECT_EQ(log, (std::vector<std::string>{"before:0", "first:top:2", "failing:top:2", "after:-7"}));
    log.clear();
    mgr.before_status = -3071;
    EXPECT_EQ(mgr.load(path), -3071);
    EXPECT_EQ(log, (std::vector<std::string>{"before:0", "after:-3071"}));
}

// What each text gives: the result, and whether the one client saw the top
// section with how many keys. A typo further down a hand-edited file must not
// cost the user the keys that read well: what the reader formed is handed on.
TEST_F(SettingMgrInterfaceTest, EachTextLoadsOrIsRefusedWithItsCode)
{
    RecordingClient client(log, "client");
    mgr.add_client(client);
    const struct
    {
        const char* text;
        int result;
        int keys;  // -1: the client is not reached
    } cases[] = {
        {"top = { }\n", 0, 0},  // an empty list at the top is an empty section
        {"top = value", SettingMgrInterface::err_not_section, -1},
        {"top = { a b }", SettingMgrInterface::err_not_section, -1},
        {"top = value junk", SettingMgrInterface::err_not_section, -1},
        {"garbage", -1015 - 1024, -1},  // reader errors without a key, shifted
        {"top = {", -1020 - 1024, -1},
        {"// nothing but a comment\n", -1024, -1},
        {"top = { a = 1 b }", 0, 1},
        {"top = { a = 1 c = { x } } junk", 0, 2},
        {"top = { a = 1 s = { b = 2 } c }", 0, 2},
    };
    for (const auto& c : cases)
    {
        log.clear();
        EXPECT_EQ(mgr.load(dir.write_file("a.cfg", c.text)), c.result) << c.text;
        const std::vector<std::string> seen =
            c.keys < 0 ? std::vector<std::string>{}
                       : std::vector<std::string>{"before:0", "client:top:" + std::to_string(c.keys), "after:0"};
        EXPECT_EQ(log, seen) << c.text;
    }
}

TEST_F(SettingMgrInterfaceTest, FilesThatCannotBeReadAreReportedAndBadNamesThrow)
{
    EXPECT_EQ(mgr.load(dir.get_path("missing.cfg")), SettingMgrInterface::err_cannot_open);
    EXPECT_EQ(mgr.load(""), SettingMgrInterface::err_cannot_open);
    // A folder opens on some systems and then fails to read; either way it is
    // not loaded.
    const int folder = mgr.load(dir.get_path());
    EXPECT_TRUE(folder == SettingMgrInterface::err_cannot_open || folder == SettingMgrInterface::err_cannot_read)
        << folder;
    std::string big = "top = { a = 1 }\n";
    big.resize(SettingMgrInterface::max_file_size + 1, ' ');
    EXPECT_EQ(mgr.load(dir.write_file("big.cfg", big)), SettingMgrInterface::err_cannot_read);
    EXPECT_TRUE(log.empty());
    // Name errors of the reader reach the caller.
    EXPECT_THROW(mgr.load(dir.write_file("a.cfg", "top = { bad/name = 1 }")), std::runtime_error);
}

}  // namespace
