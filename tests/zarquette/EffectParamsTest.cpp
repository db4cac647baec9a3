#include "lumo/NotificationFlag.h"
#include "lumo/TempoRecord.h"
#include "zarquette/ParamNuke.h"
#include "zarquette/ParamTempo.h"
#include "zarquette/ParamVinRouge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>
#include <string>
#include <tuple>

namespace
{

using Param = const lumo::NormalizedParamInterface*;

const zarquette::ParamTempo kTempo;
const zarquette::ParamVinRouge kPercent;
const zarquette::ParamNuke kNuke;

// Tempo spans 60 to 240 BPM, a percentage is its own value, the switch rounds
// to off or on.
TEST(EffectParams, NormalizedAndNaturalValues)
{
    for (const auto& [p, norm, nat] : std::initializer_list<std::tuple<Param, float, double>>{
             {&kTempo, 0.0f, 60.0}, {&kTempo, 1.0f, 240.0}, {&kTempo, 0.125f, 82.5}, {&kPercent, 0.25f, 0.25},
             {&kNuke, 0.49f, 0.0}, {&kNuke, 0.5f, 1.0}})
    {
        EXPECT_DOUBLE_EQ(p->norm_to_nat(norm), nat) << norm;
    }
    for (const auto& [p, nat, norm] : std::initializer_list<std::tuple<Param, double, double>>{
             {&kTempo, 120.0, 1.0 / 3.0}, {&kTempo, 82.5, 0.125}, {&kPercent, 0.75, 0.75}, {&kNuke, 0.2, 0.0},
             {&kNuke, 1.0, 1.0}})
    {
        EXPECT_DOUBLE_EQ(p->nat_to_norm(nat), norm) << nat;
    }
}

// What a value shows, within the caller's capacity (a display is cut to 15
// characters before that applies), and what a typed text gives: a number
// clamped into the range, or nothing (NaN here) when the text is not
// understood, which leaves the caller's flag as it was.
TEST(EffectParams, DisplayAndTypedTexts)
{
    for (const auto& [p, nat, capacity, shown] : std::initializer_list<std::tuple<Param, double, int, std::string>>{
             {&kTempo, 60.0, 64, "60.000"}, {&kTempo, 240.0, 64, "240.000"}, {&kTempo, 133.3333, 64, "133.333"},
             {&kTempo, 133.3333, 4, "133"}, {&kPercent, 0.5, 64, " 50.00"}, {&kPercent, 0.0, 64, "  0.00"},
             {&kPercent, 1.0, 64, "100.00"}, {&kPercent, 1e20, 64, "100000000000000"}, {&kNuke, 0.0, 64, "Oui"},
             {&kNuke, 1.0, 64, "OUI"}})
    {
        char text[64];
        p->get_display(text, capacity, nat);
        EXPECT_EQ(text, shown) << nat;
    }
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const auto& [p, text, nat] : std::initializer_list<std::tuple<Param, const char*, double>>{
             {&kTempo, "300", 240.0}, {&kTempo, "12", 60.0}, {&kTempo, "97.5 BPM", 97.5}, {&kTempo, "abc", none},
             {&kTempo, "", none}, {&kTempo, "nan", none}, {&kTempo, "inf", 240.0}, {&kPercent, "50", 0.5},
             {&kPercent, " 12.5 %", 0.125}, {&kPercent, "-5", 0.0}, {&kPercent, "250", 1.0}, {&kPercent, "lots", none},
             {&kPercent, nullptr, none}, {&kNuke, "OUI", 1.0}, {&kNuke, "Oui", 0.0}, {&kNuke, "mais OUI!", 1.0},
             {&kNuke, "oui", none}, {&kNuke, "non", none}, {&kNuke, nullptr, none}})
    {
        const char* shown = text != nullptr ? text : "(null)";
        for (bool ok_before : {false, true})
        {
            bool ok = ok_before;
            const double got = p->parse_display(text, ok);
            EXPECT_EQ(ok, ok_before || !std::isnan(nat)) << shown;
            EXPECT_TRUE(std::isnan(nat) || got == nat) << shown << ": " << got;
        }
    }
}

// With the host's tempo in use, a report that differs by more than 0.0001 BPM
// becomes the value and is notified (a moved knob falls back to it); without,
// the parameter leads the tempo record.
TEST(EffectParams, TempoFollowsTheHostOrLeadsTheRecord)
{
    lumo::TempoRecord record;
    zarquette::ParamTempo tempo;
    lumo::NotificationFlag notified;
    tempo.init_tempo(120.0, 0, &record);
    tempo.set_listener(&notified);
    tempo.set_use_host_tempo(true);
    tempo.set_host_tempo(120.00005f);
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), 120.0);
    EXPECT_FALSE(notified.test());
    tempo.set_host_tempo(120.001f);
    EXPECT_TRUE(notified.test_and_clear());
    tempo.set_host_tempo(120.001f);  // the same report again is no change
    EXPECT_FALSE(notified.test());
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), static_cast<double>(120.001f));
    EXPECT_NEAR(tempo.get_norm(), (120.001 - 60.0) / 180.0, 1e-7);

    record.bpm = 90.0;
    tempo.set_norm_value(1.0f);
    EXPECT_DOUBLE_EQ(record.bpm.load(), 90.0);
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), 90.0);

    tempo.set_use_host_tempo(false);
    notified.clear();
    tempo.set_norm_value(0.5f);
    EXPECT_DOUBLE_EQ(record.bpm.load(), 150.0);
    EXPECT_TRUE(notified.test());
}

}  // namespace
