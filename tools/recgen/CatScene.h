#pragma once

#include "CatCalls.h"
#include "Mix.h"
#include "Rng.h"

#include <functional>

namespace recgen
{

// Arranges the calls of one cat recording, by what its name and group say it
// is: a few meows, a kitten crying, a talking cat; yowls, a caterwaul, growls,
// two cats arguing; hisses, screams, a fight.
class CatScene
{
public:
    enum class Kind { meow, kitten, talking, yowl, caterwaul, growl, argument, hiss, scream, fight };

    static Kind get_kind(const char* name, int group);
    // Seconds a recording of this kind usually lasts, drawn from its range.
    static double draw_duration(Kind kind, Rng& rng);

    CatScene(Mix& mix, Rng& rng) : _mix(mix), _rng(rng), _calls(rng) {}

    void compose(Kind kind);

private:
    using Call = std::function<Gesture(double dur)>;

    // Calls one after another from the start to the end of the recording, each
    // lasting between lo and hi seconds, with gaps between them.
    void add_sequence(const Call& call, double lo, double hi, double gap_lo, double gap_hi);
    void add_argument();
    void add_fight();

    Mix& _mix;
    Rng& _rng;
    CatCalls _calls;
};

}  // namespace recgen
