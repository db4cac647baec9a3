#pragma once

#include "zarquette/RndGen.h"
#include "zarquette/SamplePlayer.h"
#include "zarquette/SampleSet.h"

namespace zarquette
{

// Decides when a recording starts, which one and where it sits in the stereo
// field. Every 10 ms of audio it rolls a die; on a hit it picks a group (calm,
// louder or furious cats), a recording in the group and a pan position, and
// starts it. "Oignons" sets how often, how angry and how wide. On days 1, 8,
// 15, 22 and 29 of the month the army brings a girl's voice instead of cats.
class CatArmy
{
public:
    struct Group
    {
        int first = 0;  // index of the group's first recording in the player
        int count = 0;
    };

    static constexpr int max_groups = 3;

    // Loads the set of today's date; throws std::runtime_error
    // "zarquette::CatArmy::CatArmy(): cannot load source sample." when a
    // recording cannot be loaded.
    CatArmy();
    // Loads the given set, with the same failure.
    explicit CatArmy(const SampleSet& set);
    virtual ~CatArmy() = default;
    CatArmy(const CatArmy&) = delete;
    CatArmy& operator=(const CatArmy&) = delete;

    // The set that plays on a day of the month.
    static SampleSet get_sample_set(int day_of_month);

    // The two output buffers render writes into; they stay the caller's.
    void set_buffers(float* left, float* right);
    void set_sample_freq(float hz);
    // o in [0, 1]: density, anger and spread all rise with it.
    void set_oignons(float o);
    // Stops every voice and restarts the tick.
    void reset();
    // Clears n frames of the output buffers and renders into them.
    void render(int n);

    const SamplePlayer& use_player() const { return _player; }
    SamplePlayer& use_player() { return _player; }
    const RndGen& use_rnd() const { return _rnd; }
    const Group& use_group(int g) const { return _groups[g]; }
    int get_nbr_groups() const { return _nbr_groups; }
    float get_sample_freq() const { return _sample_freq; }
    int get_tick_len() const { return _tick_len; }
    int get_tick_pos() const { return _tick_pos; }
    int get_trigger_odds() const { return _trigger_odds; }
    float get_group_centre() const { return _group_centre; }
    float get_group_spread() const { return _group_spread; }
    float get_pan_spread() const { return _pan_spread; }

private:
    void load(const SampleSet& set);
    void run_tick();

    SamplePlayer _player;
    Group _groups[max_groups];
    float _sample_freq = 44100.0f;
    int _tick_len = 441;
    int _tick_pos = 0;
    float* _out_l = nullptr;
    float* _out_r = nullptr;
    RndGen _rnd;
    int _nbr_groups = 0;
    int _trigger_odds = 1000;
    float _group_centre = 0.001f;
    float _group_spread = 1.0f;
    float _pan_spread = 1.0f;
};

}  // namespace zarquette
