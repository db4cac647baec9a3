#include "basic/ConfKeyMulti.h"
#include "basic/SettingClientInterface.h"
#include "basic/SettingMgrInterface.h"
#include "tests/basic/ScratchDir.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace
{

// Remembers the one key it expects and counts the loads that did not bring it.
class ExpectingClient : public basic::SettingClientInterface
{
public:
    explicit ExpectingClient(const std::string& value) : _value(value) {}
    int save_settings(basic::ConfKeyMulti& /*root*/) override { return 0; }
    int load_settings(const basic::ConfKeyMulti& root) override
    {
        wrong += root.get_nbr_keys() != 40 || root.get_string("k39") != _value ? 1 : 0;
        return 0;
    }
    int wrong = 0;

private:
    std::string _value;
};

std::string make_file_text(const std::string& value)
{
    std::string text = "top =\n{\n";
    for (int i = 0; i < 40; ++i)
    {
        text += "   k" + std::to_string(i) + " = " + value + "\n";
    }
    return text + "}\n";
}

// Hosts create plug-in instances on several threads at once, and each
// instance loads its settings file while it is created: two loads must not
// share any reading state.
TEST(SettingMgrInterfaceStress, TwoInstancesLoadTheirFilesAtTheSameTime)
{
    zq_test::ScratchDir dir;
    const std::string paths[2] = {dir.write_file("a.cfg", make_file_text("alpha")),
                                  dir.write_file("b.cfg", make_file_text("bravo"))};
    basic::SettingMgrInterface mgrs[2];
    ExpectingClient clients[2] = {ExpectingClient("alpha"), ExpectingClient("bravo")};
    int failed[2] = {0, 0};
    auto load_often = [&](int who) {
        mgrs[who].add_client(clients[who]);
        for (int i = 0; i < 300; ++i)
        {
            failed[who] += mgrs[who].load(paths[who]) != 0 ? 1 : 0;
        }
    };
    std::thread other(load_often, 1);
    load_often(0);
    other.join();
    for (int who = 0; who < 2; ++who)
    {
        EXPECT_EQ(failed[who], 0) << who;
        EXPECT_EQ(clients[who].wrong, 0) << who;
    }
}

}  // namespace
