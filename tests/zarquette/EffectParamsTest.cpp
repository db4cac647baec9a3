#include "lumo/NotificationFlag.h"
#include "lumo/TempoRecord.h"
#include "zarquette/ParamBof.h"
#include "zarquette/ParamGauloises.h"
#include "zarquette/ParamNuke.h"
#include "zarquette/ParamOignons.h"
#include "zarquette/ParamTempo.h"
#include "zarquette/ParamVinRouge.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace
{

std::string display(const lumo::NormalizedParamInterface& p, double nat, int capacity = 64)
{
    char buf[64];
    p.get_display(buf, capacity, nat);
    return buf;
}

// The natural value a typed text gives, or NaN when the text is not understood.
double typed(const lumo::NormalizedParamInterface& p, const char* text)
{
    bool ok = false;
    const double v = p.parse_display(text, ok);
    return ok ? v : std::numeric_limits<double>::quiet_NaN();
}

class CountingListener : public lumo::NotifiedInterface
{
public:
    void notify(lumo::NotifierInterface&) override { ++count; }
    int count = 0;
};

TEST(EffectParams, TempoMappingAndTexts)
{
    zarquette::ParamTempo tempo;
    EXPECT_DOUBLE_EQ(tempo.norm_to_nat(0.0f), 60.0);
    EXPECT_DOUBLE_EQ(tempo.norm_to_nat(1.0f), 240.0);
    EXPECT_DOUBLE_EQ(tempo.nat_to_norm(120.0), 1.0 / 3.0);
    for (float n : {0.0f, 0.125f, 1.0f / 3.0f, 0.7f, 1.0f})
    {
        EXPECT_NEAR(tempo.nat_to_norm(tempo.norm_to_nat(n)), n, 1e-7);
    }
    EXPECT_EQ(display(tempo, tempo.norm_to_nat(0.0f)), "60.000");
    EXPECT_EQ(display(tempo, tempo.norm_to_nat(1.0f)), "240.000");
    EXPECT_EQ(display(tempo, 133.3333), "133.333");
    EXPECT_EQ(display(tempo, 133.3333, 4), "133");

    EXPECT_DOUBLE_EQ(typed(tempo, "300"), 240.0);
    EXPECT_DOUBLE_EQ(typed(tempo, "12"), 60.0);
    EXPECT_DOUBLE_EQ(typed(tempo, "97.5 BPM"), 97.5);
    EXPECT_TRUE(std::isnan(typed(tempo, "abc")));
    EXPECT_TRUE(std::isnan(typed(tempo, "")));
    EXPECT_TRUE(std::isnan(typed(tempo, "nan")));
    EXPECT_DOUBLE_EQ(typed(tempo, "inf"), 240.0);

    tempo.init(120.0, 0);
    EXPECT_FLOAT_EQ(tempo.get_norm(), 1.0f / 3.0f);
    EXPECT_FLOAT_EQ(tempo.default_norm, 1.0f / 3.0f);
    EXPECT_EQ(tempo.automation_priority, 0);
}

TEST(EffectParams, PercentMappingAndTexts)
{
    zarquette::ParamVinRouge vin;
    EXPECT_DOUBLE_EQ(vin.norm_to_nat(0.25f), 0.25);
    EXPECT_DOUBLE_EQ(vin.nat_to_norm(0.75), 0.75);
    EXPECT_EQ(display(vin, 0.5), " 50.00");
    EXPECT_EQ(display(vin, 0.0), "  0.00");
    EXPECT_EQ(display(vin, 1.0), "100.00");
    // The format is cut to 15 characters before the caller's capacity applies.
    EXPECT_EQ(display(vin, 1e20).size(), 15u);

    EXPECT_DOUBLE_EQ(typed(vin, "50"), 0.5);
    EXPECT_DOUBLE_EQ(typed(vin, " 12.5 %"), 0.125);
    EXPECT_DOUBLE_EQ(typed(vin, "-5"), 0.0);
    EXPECT_DOUBLE_EQ(typed(vin, "250"), 1.0);
    EXPECT_TRUE(std::isnan(typed(vin, "lots")));
    EXPECT_TRUE(std::isnan(typed(vin, nullptr)));

    // Unparsable text leaves ok exactly as the caller set it.
    bool ok = true;
    vin.parse_display("x", ok);
    EXPECT_TRUE(ok);
}

TEST(EffectParams, NuclearPowerSwitch)
{
    zarquette::ParamNuke nuke;
    EXPECT_DOUBLE_EQ(nuke.norm_to_nat(0.49f), 0.0);
    EXPECT_DOUBLE_EQ(nuke.norm_to_nat(0.5f), 1.0);
    EXPECT_DOUBLE_EQ(nuke.nat_to_norm(0.2), 0.0);
    EXPECT_DOUBLE_EQ(nuke.nat_to_norm(1.0), 1.0);
    EXPECT_EQ(display(nuke, nuke.norm_to_nat(0.49f)), "Oui");
    EXPECT_EQ(display(nuke, nuke.norm_to_nat(0.5f)), "OUI");

    EXPECT_DOUBLE_EQ(typed(nuke, "OUI"), 1.0);
    EXPECT_DOUBLE_EQ(typed(nuke, "Oui"), 0.0);
    EXPECT_DOUBLE_EQ(typed(nuke, "mais OUI!"), 1.0);
    EXPECT_TRUE(std::isnan(typed(nuke, "oui")));
    EXPECT_TRUE(std::isnan(typed(nuke, "non")));
    EXPECT_TRUE(std::isnan(typed(nuke, nullptr)));
}

class TempoSourceTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        tempo.init_tempo(120.0, 0, &record);
        tempo.set_listener(&listener);
    }

    lumo::TempoRecord record;
    zarquette::ParamTempo tempo;
    CountingListener listener;
};

TEST_F(TempoSourceTest, LeadsTheTempoRecordWithoutHostTempo)
{
    record.bpm = 99.0;
    tempo.set_norm_value(0.5f);
    EXPECT_DOUBLE_EQ(record.bpm.load(), 150.0);
    EXPECT_EQ(listener.count, 1);
}

TEST_F(TempoSourceTest, AdoptsHostTempoBeyondTheThresholdOnly)
{
    tempo.set_use_host_tempo(true);
    tempo.set_host_tempo(120.00005f);  // within 0.0001 of 120: no change
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), 120.0);
    EXPECT_EQ(listener.count, 0);

    tempo.set_host_tempo(120.001f);
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), static_cast<double>(120.001f));
    EXPECT_NEAR(tempo.get_norm(), (120.001 - 60.0) / 180.0, 1e-7);
    EXPECT_EQ(listener.count, 1);

    // The same report again is no change.
    tempo.set_host_tempo(120.001f);
    EXPECT_EQ(listener.count, 1);
}

TEST_F(TempoSourceTest, FollowingTheHostDoesNotWriteTheRecord)
{
    tempo.set_use_host_tempo(true);
    record.bpm = 90.0;
    tempo.set_norm_value(1.0f);  // the user moves the knob: the host tempo wins back
    EXPECT_DOUBLE_EQ(record.bpm.load(), 90.0);
    EXPECT_DOUBLE_EQ(tempo.get_nat(0), 90.0);
}

}  // namespace
