#include "CatCalls.h"

#include <algorithm>

namespace recgen
{

namespace
{

struct MouthShape
{
    double formant[Gesture::nbr_formants];
    double bandwidth[Gesture::nbr_formants];
};

// Formants of an adult cat for "m", "i", "a", "o", "w", a growl from the
// throat and a hiss through bared teeth.
constexpr MouthShape mouths[] = {
    {{450.0, 1400.0, 3600.0, 5200.0}, {140.0, 200.0, 300.0, 400.0}},
    {{800.0, 2200.0, 3900.0, 5400.0}, {110.0, 160.0, 250.0, 350.0}},
    {{1150.0, 2000.0, 4000.0, 5600.0}, {110.0, 160.0, 250.0, 350.0}},
    {{850.0, 1400.0, 3700.0, 5200.0}, {110.0, 160.0, 250.0, 350.0}},
    {{550.0, 1000.0, 3400.0, 5000.0}, {130.0, 180.0, 280.0, 380.0}},
    {{600.0, 1250.0, 2700.0, 4200.0}, {200.0, 250.0, 350.0, 450.0}},
    {{2600.0, 4300.0, 6000.0, 7500.0}, {600.0, 600.0, 600.0, 600.0}},
};

}  // namespace

void CatCalls::set_mouth(Gesture::Pose& p, Mouth m, double scale) const
{
    const MouthShape& s = mouths[static_cast<int>(m)];
    for (int i = 0; i < Gesture::nbr_formants; ++i)
    {
        p.formant[i] = s.formant[i] * scale;
        p.bandwidth[i] = s.bandwidth[i] * scale;
    }
}

Gesture CatCalls::contour(Gesture g, std::initializer_list<Key> keys, const Call& call) const
{
    for (const Key& k : keys)
    {
        g.add(k.at * call.dur, [&](Gesture::Pose& p) {
            p.voice = k.voice;
            p.breath = k.voice > 0.0 ? call.breath : 0.0;
            p.f0 = k.pitch * call.f0;
            set_mouth(p, k.mouth, call.scale);
        });
    }
    return g;
}

Gesture CatCalls::meow(double dur, double f0)
{
    Gesture g;
    g.vibrato_rate = _rng.range(4.5, 7.0);
    g.vibrato_depth = _rng.range(0.1, 0.35);
    g.jitter = 0.006;
    g.brightness = _rng.range(2500.0, 4000.0);
    const Call call{dur, f0, _rng.range(0.92, 1.08), _rng.range(0.03, 0.08)};
    const double peak = _rng.range(0.25, 0.45);
    return contour(g,
                   {{0.0, 0.0, 0.7, Mouth::closed},
                    {0.07, 0.6, 0.8, Mouth::closed},
                    {0.18, 0.9, 0.88, Mouth::narrow},
                    {peak, 1.0, 1.0, Mouth::wide},
                    {0.7, 0.85, 0.9, Mouth::round},
                    {0.9, 0.4, 0.76, Mouth::shut},
                    {1.0, 0.0, 0.62, Mouth::shut}},
                   call);
}

Gesture CatCalls::kitten(double dur, double f0)
{
    Gesture g;
    g.vibrato_rate = _rng.range(6.0, 8.0);
    g.vibrato_depth = _rng.range(0.1, 0.3);
    g.jitter = 0.01;
    g.brightness = _rng.range(4500.0, 6500.0);
    const Call call{dur, f0, _rng.range(1.2, 1.35), _rng.range(0.06, 0.12)};
    const bool pleading = _rng.chance(0.35);  // some cries rise again at the end
    return contour(g,
                   {{0.0, 0.0, 0.8, Mouth::narrow},
                    {0.08, 0.8, 0.95, Mouth::narrow},
                    {0.3, 1.0, 1.0, Mouth::wide},
                    {0.75, 0.8, pleading ? 1.08 : 0.85, Mouth::round},
                    {1.0, 0.0, pleading ? 1.12 : 0.75, Mouth::round}},
                   call);
}

Gesture CatCalls::trill(double dur, double f0)
{
    Gesture g;
    g.tremolo_rate = _rng.range(22.0, 30.0);
    g.tremolo_depth = 0.85;
    g.jitter = 0.01;
    g.brightness = 2500.0;
    return contour(g,
                   {{0.0, 0.0, 0.85, Mouth::closed},
                    {0.15, 0.9, 0.88, Mouth::closed},
                    {0.8, 0.9, 1.0, Mouth::round},
                    {1.0, 0.0, 1.05, Mouth::round}},
                   Call{dur, f0, 1.0, 0.05});
}

Gesture CatCalls::yowl(double dur, double f0)
{
    Gesture g;
    g.vibrato_rate = _rng.range(5.0, 7.5);
    g.vibrato_depth = _rng.range(0.4, 0.9);
    g.wobble_rate = _rng.range(1.5, 3.0);
    g.wobble_depth = _rng.range(0.5, 1.5);
    g.jitter = 0.012;
    g.roughness = _rng.range(0.1, 0.25);
    g.brightness = _rng.range(5000.0, 7000.0);
    g.drive = _rng.range(1.0, 2.0);
    const Call call{dur, f0, _rng.range(0.95, 1.05), 0.08};
    return contour(g,
                   {{0.0, 0.0, 0.7, Mouth::closed},
                    {0.1, 0.8, 0.85, Mouth::narrow},
                    {0.45, 1.0, 1.0, Mouth::wide},
                    {0.75, 1.0, 0.97, Mouth::wide},
                    {0.92, 0.6, 0.8, Mouth::shut},
                    {1.0, 0.0, 0.72, Mouth::shut}},
                   call);
}

Gesture CatCalls::caterwaul(double dur, double f0)
{
    Gesture g;
    g.vibrato_rate = _rng.range(5.5, 7.0);
    g.vibrato_depth = _rng.range(0.5, 0.9);
    g.wobble_rate = _rng.range(2.0, 4.0);
    g.wobble_depth = _rng.range(1.5, 2.5);
    g.jitter = 0.015;
    g.roughness = _rng.range(0.2, 0.35);
    g.brightness = _rng.range(4500.0, 6000.0);
    g.drive = _rng.range(1.5, 2.5);
    g.add(0.0, [&](Gesture::Pose& p) { p.f0 = 0.75 * f0; set_mouth(p, Mouth::shut, 1.0); });
    g.add(0.12, [&](Gesture::Pose& p) { p.voice = 0.9; p.breath = 0.1; });
    // The "wow-wow": the mouth opens and closes every third of a second or so.
    bool open = true;
    for (double t = 0.12 + _rng.range(0.2, 0.35); t < dur - 0.25; t += _rng.range(0.25, 0.55))
    {
        const double pitch = f0 * (open ? _rng.range(0.95, 1.12) : _rng.range(0.8, 0.92));
        g.add(t, [&](Gesture::Pose& p) {
            p.voice = open ? 1.0 : 0.75;
            p.f0 = pitch;
            set_mouth(p, open ? Mouth::wide : Mouth::shut, 1.0);
        });
        open = !open;
    }
    g.add(dur - 0.1, [&](Gesture::Pose& p) { p.voice = 0.5; p.f0 = 0.8 * f0; set_mouth(p, Mouth::shut, 1.0); });
    g.add(dur, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.0; p.f0 = 0.7 * f0; });
    return g;
}

Gesture CatCalls::growl(double dur, double f0)
{
    Gesture g;
    g.jitter = 0.08;
    g.roughness = 0.5;
    g.tremolo_rate = _rng.range(16.0, 26.0);
    g.tremolo_depth = _rng.range(0.4, 0.7);
    g.brightness = 2200.0;
    g.drive = _rng.range(0.5, 1.5);
    const double swell = _rng.range(0.3, 0.7);
    g.add(0.0, [&](Gesture::Pose& p) { p.f0 = f0; set_mouth(p, Mouth::throat, 1.0); });
    g.add(0.1 * dur, [&](Gesture::Pose& p) { p.voice = 0.7; p.breath = 0.3; });
    g.add(swell * dur, [&](Gesture::Pose& p) { p.voice = 1.0; p.breath = 0.4; p.f0 = 1.2 * f0; });
    g.add(0.9 * dur, [&](Gesture::Pose& p) { p.voice = 0.7; p.f0 = 0.9 * f0; });
    g.add(dur, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.0; });
    return g;
}

Gesture CatCalls::hiss(double dur)
{
    Gesture g;
    g.fric_width = _rng.range(0.7, 1.1);
    const double centre = _rng.range(4500.0, 6500.0);
    const double spit = std::min(0.03, 0.2 * dur);
    g.add(0.0, [&](Gesture::Pose& p) { p.fric_freq = centre; set_mouth(p, Mouth::teeth, 1.0); });
    g.add(0.005, [&](Gesture::Pose& p) { p.fric = 2.0; p.breath = 0.004; });  // the spit
    g.add(spit, [&](Gesture::Pose& p) { p.fric = 0.8; p.breath = 0.002; });
    g.add(0.7 * dur, [&](Gesture::Pose& p) { p.fric = 0.7; p.fric_freq = centre * 0.9; });
    g.add(dur, [&](Gesture::Pose& p) { p.fric = 0.0; p.breath = 0.0; });
    return g;
}

Gesture CatCalls::scream(double dur, double f0)
{
    Gesture g;
    g.wobble_rate = _rng.range(12.0, 22.0);
    g.wobble_depth = _rng.range(1.5, 3.0);
    g.jitter = 0.04;
    g.roughness = _rng.range(0.35, 0.55);
    g.brightness = 9000.0;
    g.fric_width = 1.0;
    g.drive = _rng.range(2.5, 4.0);
    const double scale = _rng.range(1.05, 1.2);
    g.add(0.0, [&](Gesture::Pose& p) { p.f0 = 0.8 * f0; p.fric_freq = 4000.0; set_mouth(p, Mouth::narrow, scale); });
    g.add(0.03, [&](Gesture::Pose& p) { p.voice = 1.0; p.breath = 0.3; p.fric = 0.3; p.f0 = f0; set_mouth(p, Mouth::wide, scale); });
    g.add(0.6 * dur, [&](Gesture::Pose& p) { p.f0 = 1.1 * f0; });
    g.add(0.9 * dur, [&](Gesture::Pose& p) { p.voice = 0.8; p.f0 = 0.85 * f0; set_mouth(p, Mouth::round, scale); });
    g.add(dur, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.0; p.fric = 0.0; p.f0 = 0.7 * f0; });
    return g;
}

}  // namespace recgen
