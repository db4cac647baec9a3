#include "CatScene.h"

#include <algorithm>
#include <cstring>

namespace recgen
{

namespace
{

constexpr double lead = 0.03;  // seconds of quiet before the first call
constexpr double tail = 0.04;  // and after the last

bool has(const char* name, const char* part)
{
    return std::strstr(name, part) != nullptr;
}

}  // namespace

CatScene::Kind CatScene::get_kind(const char* name, int group)
{
    if (group == 0)
    {
        if (has(name, "kitten") || has(name, "chaton"))
        {
            return Kind::kitten;
        }
        if (has(name, "talking") || has(name, "mraur") || has(name, "itta") || has(name, "lomavit"))
        {
            return Kind::talking;
        }
        return Kind::meow;
    }
    if (group == 1)
    {
        if (has(name, "argument"))
        {
            return Kind::argument;
        }
        if (has(name, "caterwaul") || has(name, "casmews"))
        {
            return Kind::caterwaul;
        }
        if (has(name, "rr") || has(name, "animals") || has(name, "mraur"))
        {
            return Kind::growl;
        }
        return Kind::yowl;
    }
    if (has(name, "hiss") || has(name, "nerveux"))
    {
        return Kind::hiss;
    }
    if (has(name, "scrm") || has(name, "Siamese") || has(name, "ticked") || has(name, "miaou"))
    {
        return Kind::scream;
    }
    return Kind::fight;
}

double CatScene::draw_duration(Kind kind, Rng& rng)
{
    struct Range
    {
        double lo, hi;
    };
    static constexpr Range ranges[] = {
        {0.6, 2.2},  // meow
        {0.3, 1.5},  // kitten
        {1.0, 2.8},  // talking
        {0.8, 2.5},  // yowl
        {2.0, 3.2},  // caterwaul
        {0.8, 2.4},  // growl
        {1.5, 3.2},  // argument
        {0.5, 1.6},  // hiss
        {0.5, 1.8},  // scream
        {1.2, 3.0},  // fight
    };
    const Range& r = ranges[static_cast<int>(kind)];
    return rng.range(r.lo, r.hi);
}

void CatScene::add_sequence(const Call& call, double lo, double hi, double gap_lo, double gap_hi)
{
    const double end = _mix.get_duration() - tail;
    double t = lead;
    // The first call fits however short the recording is.
    for (bool first = true; end - t > (first ? 0.05 : 0.5 * lo); first = false)
    {
        double dur = std::min(_rng.range(lo, hi), end - t);
        // Better one longer call than a last one cut short.
        if (end - t - dur < lo)
        {
            dur = std::min(end - t, 1.5 * hi);
        }
        _mix.add(t, call(dur), _rng);
        t += dur + _rng.range(gap_lo, gap_hi);
    }
}

void CatScene::add_argument()
{
    // Two cats of different pitch taking turns, a growl running under both.
    const double end = _mix.get_duration() - tail;
    const double f_a = _rng.range(380.0, 480.0);
    const double f_b = _rng.range(520.0, 680.0);
    _mix.add(lead, [&] {
        Gesture g = _calls.growl(end - lead, _rng.range(80.0, 110.0));
        g.gain = 0.35;
        return g;
    }(), _rng);
    bool first = true;
    for (double t = lead + _rng.range(0.0, 0.2); t < end - 0.3; t += _rng.range(0.25, 0.6))
    {
        const double dur = std::min(_rng.range(0.4, 0.9), end - t);
        Gesture g = _calls.yowl(dur, first ? f_a : f_b);
        g.gain = _rng.range(0.6, 1.0);
        _mix.add(t, g, _rng);
        first = !first;
    }
}

void CatScene::add_fight()
{
    // Screams, hisses and growls tumbling over each other.
    const double end = _mix.get_duration() - tail;
    for (double t = lead; t < end - 0.15; t += _rng.range(0.08, 0.35))
    {
        const double dur = std::min(_rng.range(0.15, 0.6), end - t);
        const int what = _rng.pick(5);
        Gesture g = what < 2   ? _calls.scream(dur, _rng.range(700.0, 1300.0))
                    : what < 4 ? _calls.hiss(dur)
                               : _calls.growl(dur, _rng.range(90.0, 140.0));
        g.gain = _rng.range(0.5, 1.0);
        _mix.add(t, g, _rng);
    }
}

void CatScene::compose(Kind kind)
{
    switch (kind)
    {
    case Kind::meow:
        add_sequence([&](double d) { return _calls.meow(d, _rng.range(480.0, 750.0)); }, 0.5, 1.1, 0.15, 0.5);
        break;
    case Kind::kitten:
        add_sequence([&](double d) { return _calls.kitten(d, _rng.range(750.0, 1300.0)); }, 0.2, 0.5, 0.05, 0.25);
        break;
    case Kind::talking:
        add_sequence([&](double d) {
            return _rng.chance(0.4) ? _calls.trill(d, _rng.range(350.0, 500.0)) : _calls.meow(d, _rng.range(500.0, 800.0));
        }, 0.2, 0.6, 0.05, 0.2);
        break;
    case Kind::yowl:
        add_sequence([&](double d) { return _calls.yowl(d, _rng.range(420.0, 700.0)); }, 0.7, 1.8, 0.1, 0.3);
        break;
    case Kind::caterwaul:
        add_sequence([&](double d) { return _calls.caterwaul(d, _rng.range(350.0, 600.0)); }, 1.8, 3.5, 0.1, 0.2);
        break;
    case Kind::growl:
        add_sequence([&](double d) {
            return _rng.chance(0.3) ? _calls.yowl(d, _rng.range(400.0, 600.0)) : _calls.growl(d, _rng.range(70.0, 120.0));
        }, 0.5, 1.4, 0.05, 0.2);
        break;
    case Kind::argument:
        add_argument();
        break;
    case Kind::hiss:
        add_sequence([&](double d) { return _calls.hiss(d); }, 0.3, 1.0, 0.05, 0.3);
        break;
    case Kind::scream:
        add_sequence([&](double d) { return _calls.scream(d, _rng.range(800.0, 1400.0)); }, 0.4, 1.2, 0.05, 0.2);
        break;
    case Kind::fight:
        add_fight();
        break;
    }
}

}  // namespace recgen
