#include "basic/ConfKeyMulti.h"
#include "basic/SettingClientInterface.h"
#include "basic/SettingMgrInterface.h"
#include "tests/basic/ScratchDir.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace
{

// Counts the loads that did not bring the last key of its own file.
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

// Hosts create plug-in instances on several threads at once, and each
// instance loads its settings file while it is created: two loads must not
// share any reading state.
TEST(SettingMgrInterfaceStress, TwoInstancesLoadTheirFilesAtTheSameTime)
{
    zq_test::ScratchDir dir;
    const std::string values[2] = {"alpha", "bravo"};
    int failed[2] = {0, 0};
    int wrong[2] = {0, 0};
    auto load_often = [&](int who) {
        std::string text = "top =\n{\n";
        for (int i = 0; i < 40; ++i)
        {
            text += "   k" + std::to_string(i) + " = " + values[who] + "\n";
        }
        const std::string path = dir.write_file(values[who] + ".cfg", text + "}\n");
        ExpectingClient client(values[who]);
        basic::SettingMgrInterface mgr;
        mgr.add_client(client);
        for (int i = 0; i < 300; ++i)
        {
            failed[who] += mgr.load(path) != 0 ? 1 : 0;
        }
        wrong[who] = client.wrong;
    };
    std::thread other(load_often, 1);
    load_often(0);
    other.join();
    EXPECT_EQ(failed[0] + failed[1], 0);
    EXPECT_EQ(wrong[0] + wrong[1], 0);
}

}  // namespace
