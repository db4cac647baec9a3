#pragma once

#include "Gesture.h"
#include "Rng.h"

#include <initializer_list>

namespace recgen
{

// The vocabulary of a cat, as gestures of a given duration (seconds) around a
// given pitch (Hz). A cat's vocal tract is short: its formants sit well above
// a person's.
class CatCalls
{
public:
    explicit CatCalls(Rng& rng) : _rng(rng) {}

    // Calm: a meow (mouth opening and closing on a pitch arch), a kitten's
    // higher, brighter cry, a rolled "mrrp".
    Gesture meow(double dur, double f0);
    Gesture kitten(double dur, double f0);
    Gesture trill(double dur, double f0);
    // Louder: a long, wavering yowl, the "wow-wow" of a caterwaul, a growl.
    Gesture yowl(double dur, double f0);
    Gesture caterwaul(double dur, double f0);
    Gesture growl(double dur, double f0);
    // Furious: a hiss (noise, no voice) and a ragged, noisy scream.
    Gesture hiss(double dur);
    Gesture scream(double dur, double f0);

private:
    // Shapes of the vocal tract, scaled by the cat's size.
    enum class Mouth { closed, narrow, wide, round, shut, throat, teeth };
    void set_mouth(Gesture::Pose& p, Mouth m, double scale) const;

    // A call's size: length (s), pitch (Hz), vocal tract scale, breathiness.
    struct Call
    {
        double dur, f0, scale, breath;
    };
    // One point of a call's contour: where (a fraction of its length), how
    // loud, at what part of its pitch, with which mouth.
    struct Key
    {
        double at, voice, pitch;
        Mouth mouth;
    };
    // The gesture g with poses along the keys.
    Gesture contour(Gesture g, std::initializer_list<Key> keys, const Call& call) const;

    Rng& _rng;
};

}  // namespace recgen
