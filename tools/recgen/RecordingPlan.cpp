#include "RecordingPlan.h"

#include "CatScene.h"
#include "GirlSpeech.h"
#include "Master.h"
#include "Mix.h"
#include "Rng.h"
#include "zarquette/SampleSet.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace recgen
{

namespace
{

constexpr int shortest = 2697;  // frames
constexpr int longest = 72028;

bool starts_with(const char* name, const char* prefix)
{
    return std::strncmp(name, prefix, std::strlen(prefix)) == 0;
}

bool is_one_of(const char* name, std::initializer_list<const char*> names)
{
    return std::any_of(names.begin(), names.end(), [&](const char* n) { return std::strcmp(name, n) == 0; });
}

// The cats come from several sources: most at 22050 Hz, an old sound-effects
// collection at 11025 and 8000 Hz, a handful from odd devices.
int cat_rate(const char* name)
{
    if (std::strcmp(name, "Siamese") == 0)
    {
        return 48000;
    }
    if (std::strcmp(name, "catscrm") == 0)
    {
        return 44100;
    }
    if (std::strcmp(name, "cathiss") == 0)
    {
        return 25033;
    }
    if (is_one_of(name, {"meow", "meow2", "meow3"}))
    {
        return 16168;
    }
    if (starts_with(name, "animals020"))
    {
        return 8000;
    }
    if (starts_with(name, "cat02_") || starts_with(name, "cat03_") || starts_with(name, "kittenmeow")
        || is_one_of(name, {"chat", "chat4", "chatnerveux"}))
    {
        return 11025;
    }
    return 22050;
}

// A third of the voice was recorded at 16000 Hz, spread over the set.
int voice_rate(int index, int count)
{
    return (index * 7) % count < 34 ? 16000 : 22050;
}

// The frame count of a cat recording: its kind's usual length, with the
// collection's longest and shortest pinned to two recordings.
std::size_t cat_frames(const char* name, CatScene::Kind kind, double rate, Rng& rng)
{
    if (std::strcmp(name, "caterwaul_1") == 0)
    {
        return longest;
    }
    if (std::strcmp(name, "cat02_4") == 0)
    {
        return shortest;
    }
    const double frames = std::round(CatScene::draw_duration(kind, rng) * rate);
    return static_cast<std::size_t>(std::clamp(frames, shortest + 100.0, longest - 1000.0));
}

}  // namespace

RecordingPlan::RecordingPlan(const char* name, int group, bool voice, int rate, int layout)
    : _name(name), _group(group), _voice(voice), _rate(rate), _layout(layout)
{
}

std::vector<RecordingPlan> RecordingPlan::make_all()
{
    std::vector<RecordingPlan> all;
    const zarquette::SampleSet cats = zarquette::SampleSet::get_cats();
    const zarquette::SampleSet voices = zarquette::SampleSet::get_voices();
    for (int i = 0; i < cats.size; ++i)
    {
        const zarquette::SampleSetEntry& e = cats.entries[i];
        all.push_back(RecordingPlan(e.name, e.group, false, cat_rate(e.name), static_cast<int>(all.size())));
    }
    for (int i = 0; i < voices.size; ++i)
    {
        const zarquette::SampleSetEntry& e = voices.entries[i];
        all.push_back(RecordingPlan(e.name, e.group, true, voice_rate(i, voices.size), static_cast<int>(all.size())));
    }
    return all;
}

std::vector<float> RecordingPlan::render_cat(double rate) const
{
    Rng rng = Rng::from_name(_name.c_str());
    const CatScene::Kind kind = CatScene::get_kind(_name.c_str(), _group);
    Mix mix(rate, cat_frames(_name.c_str(), kind, rate, rng));
    CatScene(mix, rng).compose(kind);
    return std::move(mix.use_samples());
}

std::vector<float> RecordingPlan::render_voice(double rate) const
{
    Rng rng = Rng::from_name(_name.c_str());
    const Gesture words = GirlSpeech(rng, _group == 1).utterance();
    const double lead = rng.range(0.03, 0.08);
    const double tail = rng.range(0.05, 0.1);
    const double frames = std::round((lead + words.get_duration() + tail) * rate);
    Mix mix(rate, static_cast<std::size_t>(std::clamp(frames, shortest + 100.0, longest - 1000.0)));
    mix.add(lead, words, rng);
    return std::move(mix.use_samples());
}

std::vector<std::int16_t> RecordingPlan::render() const
{
    const double rate = _rate;
    Rng level_rng = Rng::from_name(("level:" + _name).c_str());
    const Master master(rate, level_rng.range(-6.5, -5.5));
    return master.finish(_voice ? render_voice(rate) : render_cat(rate));
}

}  // namespace recgen
