// MIDI reaches the parser from hosts and drivers of every quality: any three
// bytes may arrive as one message. Whatever comes, every channel's state must
// stay within its ranges, each value handed on must be one MIDI can carry, and
// the saved channel states must read back to the same bytes.
#include "lumo/midi/MidiMgr.h"
#include "lumo/midi/MidiReceiverInterface.h"
#include "tests/fuzz/FuzzCheck.h"
#include "tests/lumo/midi/MidiRecorder.h"

#include <cmath>

namespace
{

using zq_test::require;

class CheckingReceiver : public lumo::MidiReceiverInterface
{
public:
    int note_on(int c, int n, float pitch, int, float velocity, int) override
    {
        require(c >= 0 && c < 16 && n >= 0 && n < 128 && std::isfinite(pitch) && velocity > 0.0f && velocity < 2.0f);
        return 1;
    }
    int note_off(int c, int n, float velocity) override
    {
        require(c >= 0 && c < 16 && n >= 0 && n < 128 && velocity >= 0.0f && velocity < 2.0f);
        return 1;
    }
    int pitch_bend(int c, float bend) override
    {
        require(c >= 0 && c < 16 && std::isfinite(bend) && std::fabs(bend) <= 128.0f);
        return 1;
    }
    int rpn_change(int, int n, int v) override { return check14(n, v); }
    int nrpn_change(int, int n, int v) override { return check14(n, v); }
    int control_change(int, int n, int v) override { return check14(n, v); }
    int raw_message(int c, int s, int d1, int d2) override
    {
        require(c >= 0 && c < 16 && s >= 0 && s < 15 && d1 >= 0 && d1 < 128 && d2 >= 0 && d2 < 128);
        return 1;
    }

private:
    static int check14(int n, int v)
    {
        require(n >= 0 && n <= 16383 && v >= 0 && v <= 16383);
        return 1;
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CheckingReceiver receiver;
    lumo::MidiMgr mgr;
    zq_test::TestMidiIn in;
    in.connect(nullptr, &mgr, &receiver);
    in.activate();
    mgr.set_pending_learn(3);
    for (std::size_t i = 0; i + 3 <= size; i += 3)
    {
        in.dispatch(data[i], data[i + 1], data[i + 2], 0.0);
        int index = 0;
        float value = 0.0f;
        mgr.map_controller(7 << 16, 100, index, value);
        require(index == 3 && value >= 0.0f && value <= 1.0f);
    }
    for (const auto& event : in.events)
    {
        require(event.id >= 0 && event.value >= 0 && event.value <= 16383);
    }
    std::vector<std::uint8_t> saved(in.get_size());
    require(in.write(saved.data(), saved.size()) == 0);
    zq_test::TestMidiIn again;
    again.activate();
    require(again.read(saved.data(), saved.size()) == 0);
    std::vector<std::uint8_t> resaved(again.get_size());
    require(again.write(resaved.data(), resaved.size()) == 0 && resaved == saved);
    for (int c = 0; c < 16; ++c)
    {
        const lumo::MidiChannelState& s = again.channel_state(c);
        require(s.get_bank() >= 0 && s.get_bank() <= 16383 && s.get_rpn_number() <= 16383
              && s.get_bend_range_raw() <= 16383 && std::isfinite(s.get_bend()));
    }
    return 0;
}
