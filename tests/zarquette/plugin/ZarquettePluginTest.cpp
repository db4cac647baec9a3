// The whole plug-in through its entry point, as a host drives it: what it
// tells the host, the host's values and chunks, and audio under the host's
// odd habits. The parts' own rules are their folders' tests.
#include "PluginFixture.h"

#include "sys/ClockPin.h"
#include "tests/support/Signal.h"

#include <cstring>
#include <limits>

namespace
{

using lumo::vst2::PluginOp;
using zq_test::all_clean;
using zq_test::peak;

TEST(ZarquetteEntry, AnOldHostGetsNoPlugin)
{
    FakeHost host;
    host.version = 0;
    EXPECT_EQ(host.open_plugin(), nullptr);
}

TEST(ZarquetteEntry, StartsFromTheTemplateProgramNotTheDefaults)
{
    // A host without a tempo of its own: the tempo parameter leads.
    FakeHost host;
    host.time_info.flags = 0;
    lumo::vst2::AEffect* effect = host.open_plugin();
    ASSERT_NE(effect, nullptr);
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(effect->get_parameter(effect, i), 0.0f) << i;
    }
    char text[64] = {};
    FakeHost::dispatch(effect, PluginOp::get_param_display, 0, 0, text);
    EXPECT_STREQ(text, "60.000");
    FakeHost::dispatch(effect, PluginOp::get_program_name, 0, 0, text);
    EXPECT_STREQ(text, "Default");
    FakeHost::close_plugin(effect);
}

// The audio side and the editor must be freed exactly once when building
// the adapter fails half way (the sanitizer build sees a second free or a leak).
TEST(ZarquetteEntry, AFailureAfterTheAdaptersBaseFreesEverythingOnce)
{
    FakeHost host;
    host.fail_vendor_request = true;
    EXPECT_EQ(host.open_plugin(), nullptr);
    host.fail_vendor_request = false;
    lumo::vst2::AEffect* effect = host.open_plugin();
    ASSERT_NE(effect, nullptr);
    FakeHost::close_plugin(effect);
}

using ZarquettePlugin = PluginFixture;

TEST_F(ZarquettePlugin, TheHostSeesTheEffectAsItIs)
{
    EXPECT_EQ(effect->magic, lumo::vst2::effect_magic);
    EXPECT_EQ(effect->unique_id, 0x565A7271);
    EXPECT_EQ(effect->num_programs, 1);
    EXPECT_EQ(effect->num_params, 6);
    EXPECT_EQ(effect->num_inputs, 2);
    EXPECT_EQ(effect->num_outputs, 2);
    EXPECT_EQ(effect->version, 1);
    namespace f = lumo::vst2::effect_flags;
    // The editor's flag depends on the platform's window; the editor's tests check it.
    EXPECT_EQ(effect->flags & ~f::has_editor, f::can_replacing | f::can_mono);
    EXPECT_EQ(text_of(PluginOp::get_effect_name), "Zarquette");
    EXPECT_EQ(text_of(PluginOp::get_vendor_string), "Velnor");
    EXPECT_EQ(text_of(PluginOp::get_product_string), "Velnor Zarquette 1.12");
    EXPECT_EQ(dispatch(PluginOp::get_vendor_version), 0x112);
    EXPECT_EQ(dispatch(PluginOp::get_plug_category), 1);
    EXPECT_EQ(dispatch(PluginOp::get_vst_version), 2200);
    for (const auto& [text, answer] : std::vector<std::pair<std::string, std::intptr_t>>{
             {"receiveVstTimeInfo", 1}, {"sendVstEvents", 1}, {"receiveVstMidiEvent", 1}, {"offline", 0},
             {"ReceiveVstTimeInfo", 0}})
    {
        std::string t = text;
        EXPECT_EQ(dispatch(PluginOp::can_do, 0, 0, t.data()), answer) << text;
    }
}

TEST_F(ZarquettePlugin, ParameterAndPinTextsAndProperties)
{
    const char* names[] = {"Tempo", "Bof", "Gauloises", "Nuclear Power", "Oignons", "Vin Rouge"};
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(text_of(PluginOp::get_param_name, i), names[i]);
    }
    EXPECT_EQ(text_of(PluginOp::get_param_label, 0), "BPM");
    EXPECT_EQ(text_of(PluginOp::get_param_display, 3), "Oui");
    EXPECT_EQ(text_of(PluginOp::get_param_name, 6), "");
    EXPECT_EQ(text_of(PluginOp::get_param_name, -1), "");

    lumo::vst2::ParameterProperties props{};
    ASSERT_EQ(dispatch(PluginOp::get_parameter_properties, 5, 0, &props), 1);
    EXPECT_EQ(props.flags, lumo::vst2::parameter_flags::can_ramp);
    EXPECT_STREQ(props.short_label, "Vin Rou");
    ASSERT_EQ(dispatch(PluginOp::get_parameter_properties, 3, 0, &props), 1);
    EXPECT_EQ(props.flags, lumo::vst2::parameter_flags::is_switch);
    EXPECT_EQ(dispatch(PluginOp::get_parameter_properties, 6, 0, &props), 0);

    lumo::vst2::PinProperties pin{};
    ASSERT_EQ(dispatch(PluginOp::get_input_properties, 1, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Right input");
    EXPECT_EQ(pin.flags, 3);
    ASSERT_EQ(dispatch(PluginOp::get_output_properties, 0, 0, &pin), 1);
    EXPECT_STREQ(pin.label, "Left output");
    EXPECT_EQ(dispatch(PluginOp::get_output_properties, 2, 0, &pin), 0);
}

TEST_F(ZarquettePlugin, HostValuesAndTextsAreSanitised)
{
    effect->set_parameter(effect, 5, 0.5f);
    effect->set_parameter(effect, 5, std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.5f);
    effect->set_parameter(effect, 5, 7.0f);
    EXPECT_EQ(effect->get_parameter(effect, 5), 1.0f);
    effect->set_parameter(effect, 5, -1.0f);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.0f);
    effect->set_parameter(effect, 99, 0.5f);  // ignored
    EXPECT_EQ(effect->get_parameter(effect, 99), 0.0f);

    std::string fifty = "50";
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 5, 0, fifty.data()), 1);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.5f);
    EXPECT_EQ(text_of(PluginOp::get_param_display, 5), " 50.00");
    std::string junk = "beaucoup";
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 5, 0, junk.data()), 0);
    EXPECT_EQ(effect->get_parameter(effect, 5), 0.5f);
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 5, 0, nullptr), 1);
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 6, 0, fifty.data()), 0);
    std::string on = "OUI";
    EXPECT_EQ(dispatch(PluginOp::string_to_parameter, 3, 0, on.data()), 1);
    EXPECT_EQ(effect->get_parameter(effect, 3), 1.0f);
}

// The sizes of both chunks are the records' own tests; here the dispatcher
// hands each to its reader.
TEST_F(ZarquettePlugin, ProgramAndBankChunksRoundTripAndBrokenOnesChangeNothing)
{
    effect->set_parameter(effect, 1, 0.25f);
    effect->set_parameter(effect, 4, 0.75f);
    void* data = nullptr;
    const auto preset_size = dispatch(PluginOp::get_chunk, 1, 0, &data);
    const std::vector<std::uint8_t> preset(static_cast<std::uint8_t*>(data),
                                           static_cast<std::uint8_t*>(data) + preset_size);
    const auto bank_size = dispatch(PluginOp::get_chunk, 0, 0, &data);
    const std::vector<std::uint8_t> bank(static_cast<std::uint8_t*>(data), static_cast<std::uint8_t*>(data) + bank_size);

    for (const auto& [chunk, is_preset] : {std::pair{preset, 1}, std::pair{bank, 0}})
    {
        effect->set_parameter(effect, 1, 0.9f);
        effect->set_parameter(effect, 4, 0.1f);
        std::vector<std::uint8_t> copy = chunk;
        ASSERT_EQ(dispatch(PluginOp::set_chunk, is_preset, static_cast<std::intptr_t>(copy.size()), copy.data()), 1);
        EXPECT_EQ(effect->get_parameter(effect, 1), 0.25f);
        EXPECT_EQ(effect->get_parameter(effect, 4), 0.75f);
    }

    effect->set_parameter(effect, 2, 0.125f);
    std::vector<std::uint8_t> copy = bank;
    // Truncated: the counts inside promise more than the host gives.
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 0, 50, copy.data()), 0);
    std::memset(copy.data(), 0, 4);  // a bank of no programs
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 0, bank_size, copy.data()), 0);
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 1, 0, copy.data()), 0);
    EXPECT_EQ(dispatch(PluginOp::set_chunk, 1, 10, nullptr), 0);
    EXPECT_EQ(effect->get_parameter(effect, 2), 0.125f);
}

TEST_F(ZarquettePlugin, ProgramSelectionAndNames)
{
    std::string name = "Lunch";
    dispatch(PluginOp::set_program_name, 0, 0, name.data());
    EXPECT_EQ(text_of(PluginOp::get_program_name), "Lunch");
    char indexed[64] = {};
    EXPECT_EQ(dispatch(PluginOp::get_program_name_indexed, 0, 0, indexed), 1);
    EXPECT_STREQ(indexed, "Lunch");
    EXPECT_EQ(dispatch(PluginOp::get_program_name_indexed, 1, 0, indexed), 0);
    dispatch(PluginOp::set_program, 0, 5);  // out of range: nothing
    EXPECT_EQ(dispatch(PluginOp::get_program), 0);
    EXPECT_EQ(dispatch(PluginOp::copy_program, 0), 1);
    EXPECT_EQ(dispatch(PluginOp::copy_program, 1), 0);
}

// Hosts pass buffers of the classic sizes: short texts fit in 23 bytes with
// their zero, the effect name in 31; a byte more would overrun them.
TEST_F(ZarquettePlugin, TextsStayWithinTheHostsBuffers)
{
    std::string name(40, 'n');
    dispatch(PluginOp::set_program_name, 0, 0, name.data());
    char text[64];
    std::memset(text, 'x', sizeof(text));
    dispatch(PluginOp::get_program_name, 0, 0, text);
    EXPECT_EQ(std::string(text), std::string(22, 'n'));
    EXPECT_EQ(text[23], 'x');
    // The program keeps its whole name; only the copy for the host is cut.
    EXPECT_EQ(dispatch(PluginOp::get_program_name_indexed, 0, 0, text), 1);
    EXPECT_EQ(std::string(text), name);
    for (const PluginOp op : {PluginOp::get_param_label, PluginOp::get_param_display, PluginOp::get_param_name})
    {
        std::memset(text, 'x', sizeof(text));
        dispatch(op, 1, 0, text);
        EXPECT_LE(std::strlen(text), 22u);
        EXPECT_EQ(text[23], 'x');
    }
}

// A program holds what the parameter changes stored in it, not whatever the
// audio side drifted to on its own (here the tempo it follows from the host):
// copying the current program onto itself leaves the bank as it was.
TEST_F(ZarquettePlugin, ProgramsHoldTheStoredValuesNotTheAudioSidesDrift)
{
    host.time_info.tempo = 100.0;
    std::vector<float> l(64, 0.0f), r(64, 0.0f), ol(64), orr(64);
    process(l, r, ol, orr);
    ASSERT_NEAR(effect->get_parameter(effect, 0), (100.0 - 60.0) / 180.0, 1e-6);
    effect->set_parameter(effect, 3, 0.75f);

    const auto& adapter = *static_cast<lumo::Vst2Plugin*>(lumo::AudioEffect::from_aeffect(effect));
    EXPECT_EQ(dispatch(PluginOp::copy_program, 0), 1);
    const lumo::ProgramSlot copied = adapter.use_bank().use_program(0);
    EXPECT_EQ(copied.get_value(0), 0.0f);
    EXPECT_EQ(copied.get_value(3), 0.75f);
    EXPECT_EQ(dispatch(PluginOp::copy_program, 0), 1);
    for (int i = 0; i < 6; ++i)
    {
        EXPECT_EQ(adapter.use_bank().use_program(0).get_value(i), copied.get_value(i)) << i;
    }
}

TEST_F(ZarquettePlugin, AutomationLimitFollowsTheHostsBudget)
{
    host.automatable_params = 1;
    resume();
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 0), 1);
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 1), 0);
    EXPECT_EQ(dispatch(PluginOp::can_be_automated, 6), 1);
}

// ---- Audio ---------------------------------------------------------------------

class ZarquetteAudio : public PluginFixture
{
protected:
    void SetUp() override
    {
        // 10:00 local time on a cat day.
        clock.set_local_time(sys::LocalTime{2026, 11, 9, 10, 0, 0});
        PluginFixture::SetUp();
        effect->set_parameter(effect, 2, 1.0f);  // Gauloises: full level
        effect->set_parameter(effect, 4, 1.0f);  // Oignons: many recordings
        resume();
    }

    // Renders seconds of noise input in blocks of the given size, checking
    // every block for NaN, infinities and denormals; returns the peak.
    float render(double seconds, int block)
    {
        std::vector<float> ol(static_cast<std::size_t>(block)), orr(ol);
        float p = 0.0f;
        for (int b = 0; b <= static_cast<int>(seconds * 44100.0 / block); ++b)
        {
            std::vector<float> l = noise.take(ol.size());
            std::vector<float> r = noise.take(ol.size());
            process(l, r, ol, orr);
            EXPECT_TRUE(all_clean(ol) && all_clean(orr));
            p = std::max({p, peak(ol), peak(orr)});
            clock.advance(block / 44100.0);
        }
        return p;
    }

    sys::ClockPin clock{1000.0};
    zq_test::Noise noise;
};

TEST_F(ZarquetteAudio, NanInputDoesNotPoisonTheOutput)
{
    std::vector<float> l(256, std::numeric_limits<float>::quiet_NaN()), r(l), ol(256), orr(256);
    for (int b = 0; b < 50; ++b)
    {
        process(l, r, ol, orr);
        ASSERT_TRUE(all_clean(ol) && all_clean(orr));
    }
    EXPECT_GT(render(1.0, 256), 0.0f);
}

// A host that hands null channel pointers gets silence wherever it can take
// it, never the stale contents of its own buffers.
TEST_F(ZarquetteAudio, NullChannelPointersGiveSilence)
{
    render(1.0, 256);  // the engines hold sound
    std::vector<float> l(256, 0.25f), ol(256), orr(256);
    float* in[2] = {l.data(), l.data()};
    float* out[2] = {ol.data(), orr.data()};
    float* no_in[2] = {nullptr, nullptr};
    float* right_out_only[2] = {nullptr, orr.data()};
    const auto stale = [&] {
        std::fill(ol.begin(), ol.end(), 0.5f);
        std::fill(orr.begin(), orr.end(), 0.5f);
    };

    stale();
    effect->process_replacing(effect, nullptr, out, 256);
    EXPECT_EQ(peak(ol) + peak(orr), 0.0f);
    stale();
    effect->process_replacing(effect, no_in, out, 256);
    EXPECT_EQ(peak(ol) + peak(orr), 0.0f);
    stale();
    effect->process_replacing(effect, in, right_out_only, 256);
    EXPECT_EQ(peak(orr), 0.0f);
    // The accumulating call adds silence: nothing.
    stale();
    effect->process(effect, nullptr, out, 256);
    EXPECT_EQ(ol[0], 0.5f);
    effect->process_replacing(effect, in, nullptr, 256);
    EXPECT_GT(render(1.0, 256), 0.0f);
}

// The unconnected second output is the host's: nothing is written there.
TEST_F(ZarquetteAudio, OnlyTheLeftChannelsConnected)
{
    host.second_input_connected = false;
    host.second_output_connected = false;
    std::vector<float> l(300, 0.25f), r(300, 0.25f), ol(300), orr(300, 9.0f);
    for (int b = 0; b < 300; ++b)
    {
        process(l, r, ol, orr);
    }
    EXPECT_GT(peak(ol), 0.0f);
    EXPECT_EQ(orr, std::vector<float>(300, 9.0f));
}

TEST_F(ZarquetteAudio, OutputsMayAliasTheInputs)
{
    std::vector<float> l(1000, 0.25f), r(1000, -0.25f);
    float* in[2] = {l.data(), r.data()};
    for (int b = 0; b < 100; ++b)
    {
        effect->process_replacing(effect, in, in, 1000);
        ASSERT_TRUE(all_clean(l) && all_clean(r));
    }
}

// The host's tempo leads the tempo parameter, folded by octaves into 60..240.
TEST_F(ZarquetteAudio, HostTempoIsFollowedFoldedIntoTheRange)
{
    for (const auto& [host_bpm, bpm] : {std::pair{100.0, 100.0}, {45.0, 90.0}, {500.0, 125.0}})
    {
        host.time_info.tempo = host_bpm;
        render(0.01, 256);
        EXPECT_NEAR(effect->get_parameter(effect, 0), (bpm - 60.0) / 180.0, 1e-6) << host_bpm;
    }
}

}  // namespace
