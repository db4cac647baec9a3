#pragma once

#include "Gesture.h"
#include "Rng.h"

#include <string>
#include <vector>

namespace recgen
{

// A young woman saying a short Japanese word or a few syllables, by formant
// synthesis: consonant-vowel syllables with their bursts, frication, nasal
// murmurs and formant transitions, on a pitch contour of pitch accents and
// declination. Calm speech is slower, lower and darker; excited speech is
// faster, higher, brighter and swings its pitch further.
class GirlSpeech
{
public:
    GirlSpeech(Rng& rng, bool excited);

    // One utterance, starting and ending in silence.
    Gesture utterance();

private:
    struct Syllable
    {
        std::string consonant;  // "" for a bare vowel
        char vowel;             // a, i, u, e, o
    };
    struct Accent
    {
        double t;      // centre of a syllable's vowel
        double level;  // pitch relative to the speaker's base
    };

    std::vector<Syllable> pick_syllables();
    void add_consonant(Gesture& g, const std::string& c, char vowel, double& t);
    void add_vowel(Gesture& g, char vowel, double len, double& t);
    void set_contour(Gesture& g, const std::vector<Accent>& accents) const;
    void set_vowel(Gesture::Pose& p, char vowel) const;
    void set_locus(Gesture::Pose& p, char place, char vowel) const;

    Rng& _rng;
    bool _excited;
    double _base_f0;
    double _scale;   // formant scale of this speaker's vocal tract
    double _tempo;   // durations are multiplied by this
    double _breath;  // breathiness of the voice
};

}  // namespace recgen
