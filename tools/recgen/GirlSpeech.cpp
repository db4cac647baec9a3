#include "GirlSpeech.h"

#include <iterator>

namespace recgen
{

namespace
{

struct VowelShape
{
    char vowel;
    double formant[Gesture::nbr_formants];
    double bandwidth[Gesture::nbr_formants];
};

// A young woman's Japanese vowels.
constexpr VowelShape vowels[] = {
    {'a', {950.0, 1450.0, 2900.0, 4200.0}, {90.0, 110.0, 170.0, 250.0}},
    {'i', {330.0, 2800.0, 3450.0, 4400.0}, {60.0, 100.0, 160.0, 250.0}},
    {'u', {380.0, 1550.0, 2750.0, 4100.0}, {70.0, 110.0, 170.0, 250.0}},
    {'e', {530.0, 2300.0, 3050.0, 4250.0}, {80.0, 110.0, 170.0, 250.0}},
    {'o', {520.0, 950.0, 2900.0, 4100.0}, {80.0, 100.0, 170.0, 250.0}},
};

const VowelShape& shape_of(char vowel)
{
    for (const VowelShape& v : vowels)
    {
        if (v.vowel == vowel)
        {
            return v;
        }
    }
    return vowels[0];
}

// Words, syllable by syllable.
const char* const calm_words[] = {
    "ha-i", "so-u", "e-e", "ne", "na-ni", "ho-ra", "a-no", "e-to", "mo-u", "do-u",
    "so-u-ne", "na-ru-ho-do", "wa-ka-ta", "o-ya-su-mi", "a-ri-ga-to", "sa-yo-na-ra",
    "ma-ta-ne", "sa-mu-i", "o-ha-yo", "ki-re-i",
};
const char* const excited_words[] = {
    "ka-wa-i-i", "su-go-i", "ya-ta", "ha-ya-ku", "i-ya", "u-so", "kya", "wa-a",
    "yo-shi", "da-me", "mi-te", "ta-su-ke-te", "i-ku-yo", "su-ki", "ya-da", "ki-te",
    "ha-ya-i", "o-i-shi-i", "ta-no-shi-i", "chi-ga-u",
};
const char* const consonants[] = {"", "k", "g", "s", "sh", "t", "d", "ch", "n", "h",
                                  "m", "y", "r", "w", "b", "p"};

// Place of articulation of a consonant: b(ilabial), a(lveolar), v(elar), p(alatal).
char place_of(const std::string& c)
{
    if (c == "b" || c == "p" || c == "m" || c == "w")
    {
        return 'b';
    }
    if (c == "k" || c == "g")
    {
        return 'v';
    }
    if (c == "sh" || c == "ch" || c == "y")
    {
        return 'p';
    }
    return 'a';
}

}  // namespace

GirlSpeech::GirlSpeech(Rng& rng, bool excited)
    : _rng(rng),
      _excited(excited),
      _base_f0(excited ? rng.range(285.0, 310.0) : rng.range(258.0, 280.0)),
      _scale(rng.range(1.0, 1.08)),
      _tempo(excited ? rng.range(0.75, 0.85) : rng.range(0.95, 1.1)),
      _breath(excited ? rng.range(0.05, 0.09) : rng.range(0.03, 0.06))
{
}

std::vector<GirlSpeech::Syllable> GirlSpeech::pick_syllables()
{
    std::vector<Syllable> out;
    const int kind = _rng.pick(10);
    if (kind < 6)
    {
        // A word of the lexicon.
        const char* word = _excited ? excited_words[_rng.pick(static_cast<int>(std::size(excited_words)))]
                                    : calm_words[_rng.pick(static_cast<int>(std::size(calm_words)))];
        std::string syllable;
        for (const char* c = word;; ++c)
        {
            if (*c == '-' || *c == '\0')
            {
                out.push_back({syllable.substr(0, syllable.size() - 1), syllable.back()});
                syllable.clear();
                if (*c == '\0')
                {
                    break;
                }
                continue;
            }
            syllable += *c;
        }
        return out;
    }
    // One to three free syllables.
    const int n = 1 + (kind - 6) % 3;
    for (int i = 0; i < n; ++i)
    {
        out.push_back({consonants[_rng.pick(static_cast<int>(std::size(consonants)))], "aiueo"[_rng.pick(5)]});
    }
    return out;
}

void GirlSpeech::set_vowel(Gesture::Pose& p, char vowel) const
{
    const VowelShape& v = shape_of(vowel);
    for (int i = 0; i < Gesture::nbr_formants; ++i)
    {
        p.formant[i] = v.formant[i] * _scale;
        p.bandwidth[i] = v.bandwidth[i];
    }
}

// Formants at the moment of a consonant's release: where the transitions into
// the vowel start from.
void GirlSpeech::set_locus(Gesture::Pose& p, char place, char vowel) const
{
    set_vowel(p, vowel);
    p.formant[0] = 300.0 * _scale;
    switch (place)
    {
    case 'b':
        p.formant[1] = 900.0 * _scale;
        p.formant[2] = 2400.0 * _scale;
        break;
    case 'v':
        p.formant[1] *= 1.1;  // the velar pinch: F2 and F3 close together
        p.formant[2] = p.formant[1] * 1.2;
        break;
    case 'p':
        p.formant[1] = 2500.0 * _scale;
        p.formant[2] = 3200.0 * _scale;
        break;
    default:
        p.formant[1] = 1800.0 * _scale;
        p.formant[2] = 2900.0 * _scale;
        break;
    }
}

void GirlSpeech::add_consonant(Gesture& g, const std::string& c, char vowel, double& t)
{
    const double k = _tempo;
    const char place = place_of(c);
    const bool voiceless_stop = (c == "k" || c == "t" || c == "p" || c == "ch");
    const bool voiced_stop = (c == "g" || c == "d" || c == "b");
    if (voiceless_stop || voiced_stop)
    {
        // Closure, burst, then aspiration or voicing while the formants move.
        g.add(t + 0.02 * k, [&](Gesture::Pose& p) {
            p.voice = voiced_stop ? 0.12 : 0.0;
            p.breath = 0.0;
            set_locus(p, place, vowel);
        });
        t += (voiced_stop ? 0.045 : 0.06) * k;
        const double burst_freq = place == 'b' ? 1200.0 : place == 'v' ? 2200.0 : place == 'p' ? 3500.0 : 4500.0;
        g.add(t, [&](Gesture::Pose& p) { p.fric = voiced_stop ? 0.5 : 1.2; p.fric_freq = burst_freq; });
        g.add(t + 0.01, [&](Gesture::Pose& p) { p.fric = 0.0; p.breath = voiced_stop ? _breath : 0.35; });
        if (c == "ch")
        {
            g.add(t + 0.015, [&](Gesture::Pose& p) { p.fric = 0.7; p.fric_freq = 3600.0; });
            g.add(t + 0.06 * k, [&](Gesture::Pose& p) { p.fric = 0.0; });
            t += 0.05 * k;
        }
        t += (voiced_stop ? 0.015 : 0.035) * k;
        g.add(t, [&](Gesture::Pose& p) { p.voice = voiced_stop ? 0.6 : 0.0; });
        return;
    }
    if (c == "s" || c == "sh")
    {
        const double freq = c == "s" ? 6500.0 : 3600.0;
        g.add(t + 0.015 * k, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.0; p.fric_freq = freq; set_locus(p, place, vowel); });
        g.add(t + 0.04 * k, [&](Gesture::Pose& p) { p.fric = 0.8; });
        t += 0.11 * k;
        g.add(t, [&](Gesture::Pose& p) { p.fric = 0.6; });
        g.add(t + 0.02 * k, [&](Gesture::Pose& p) { p.fric = 0.0; });
        return;
    }
    if (c == "h")
    {
        g.add(t + 0.015 * k, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.45; set_vowel(p, vowel); });
        t += 0.07 * k;
        return;
    }
    if (c == "m" || c == "n")
    {
        g.add(t + 0.015 * k, [&](Gesture::Pose& p) {
            p.voice = 0.45;
            p.breath = 0.0;
            p.formant[0] = 280.0;
            p.formant[1] = (c == "m" ? 1100.0 : 1700.0) * _scale;
            p.formant[2] = 2600.0 * _scale;
            p.bandwidth[0] = 100.0;
            p.bandwidth[1] = 250.0;
            p.bandwidth[2] = 300.0;
        });
        t += 0.07 * k;
        g.add(t, [&](Gesture::Pose& p) { p.voice = 0.5; });
        return;
    }
    if (c == "y" || c == "w")
    {
        g.add(t + 0.015 * k, [&](Gesture::Pose& p) {
            p.voice = 0.75;
            set_vowel(p, c == "y" ? 'i' : 'u');
            if (c == "w")
            {
                p.formant[1] = 800.0 * _scale;
            }
        });
        t += 0.05 * k;
        return;
    }
    if (c == "r")
    {
        // The Japanese flap: a quick tap with F3 dipping.
        g.add(t + 0.01 * k, [&](Gesture::Pose& p) {
            p.voice = 0.5;
            set_locus(p, 'a', vowel);
            p.formant[2] = 2200.0 * _scale;
        });
        t += 0.03 * k;
        return;
    }
    // A bare vowel: a soft onset, or a glide from the previous vowel.
    t += 0.02 * k;
}

void GirlSpeech::add_vowel(Gesture& g, char vowel, double len, double& t)
{
    g.add(t + 0.04 * _tempo, [&](Gesture::Pose& p) {
        p.voice = 1.0;
        p.breath = _breath;
        p.fric = 0.0;
        set_vowel(p, vowel);
    });
    t += len;
    g.add(t, [&](Gesture::Pose& p) { p.voice = 0.9; });
}

void GirlSpeech::set_contour(Gesture& g, const std::vector<Accent>& accents) const
{
    for (Gesture::Pose& p : g.poses)
    {
        double level = accents.front().level;
        for (std::size_t i = 1; i < accents.size(); ++i)
        {
            if (p.t >= accents[i].t)
            {
                level = accents[i].level;
            }
            else if (p.t > accents[i - 1].t)
            {
                const double x = (p.t - accents[i - 1].t) / (accents[i].t - accents[i - 1].t);
                level = accents[i - 1].level + x * (accents[i].level - accents[i - 1].level);
                break;
            }
        }
        p.f0 = _base_f0 * level;
    }
}

Gesture GirlSpeech::utterance()
{
    const std::vector<Syllable> syllables = pick_syllables();
    Gesture g;
    g.jitter = _excited ? 0.01 : 0.006;
    g.vibrato_rate = 5.0;
    g.vibrato_depth = _excited ? 0.15 : 0.05;
    g.brightness = _excited ? _rng.range(6000.0, 7500.0) : _rng.range(4000.0, 5000.0);
    g.fric_width = 0.5;
    g.drive = _excited ? 0.8 : 0.0;

    g.add(0.0, [&](Gesture::Pose& p) { set_vowel(p, syllables.front().vowel); });
    double t = 0.0;
    std::vector<Accent> accents;
    // Pitch accents: a low start and a high plateau, falling (calm) or leaping
    // up (excited) at the end; excited speech swings wider.
    const double high = _excited ? _rng.range(1.15, 1.3) : _rng.range(1.03, 1.1);
    const double low = _excited ? 0.92 : 0.95;
    accents.push_back({0.0, low});
    for (std::size_t i = 0; i < syllables.size(); ++i)
    {
        const bool last = i + 1 == syllables.size();
        add_consonant(g, syllables[i].consonant, syllables[i].vowel, t);
        const double len = _tempo * _rng.range(0.11, 0.16) * (last ? 1.5 : 1.0);
        const double centre = t + 0.5 * len;
        add_vowel(g, syllables[i].vowel, len, t);
        const double declination = 1.0 - 0.06 * static_cast<double>(i);
        accents.push_back({centre, (i == 0 && syllables.size() > 1 ? low : high) * declination});
    }
    const double end = t + 0.06 * _tempo;
    const bool rising = _excited ? _rng.chance(0.6) : _rng.chance(0.2);
    accents.push_back({end, rising ? high * 1.1 : low * (_excited ? 0.95 : 0.88)});
    g.add(end, [&](Gesture::Pose& p) { p.voice = 0.0; p.breath = 0.0; p.fric = 0.0; });
    set_contour(g, accents);
    return g;
}

}  // namespace recgen
