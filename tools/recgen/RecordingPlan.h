#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace recgen
{

// What one recording will be: its name, group and set, its sample rate and
// the layout of its file. Rates and lengths vary the way a collection gathered
// from many sources does.
class RecordingPlan
{
public:
    // Every recording of both sets, cats first, in table order.
    static std::vector<RecordingPlan> make_all();

    const std::string& get_name() const { return _name; }
    int get_rate() const { return _rate; }
    int get_layout() const { return _layout; }

    // The recording's samples; the same for the same name on every run.
    std::vector<std::int16_t> render() const;

private:
    RecordingPlan(const char* name, int group, bool voice, int rate, int layout);

    std::vector<float> render_cat(double rate) const;
    std::vector<float> render_voice(double rate) const;

    std::string _name;
    int _group;
    bool _voice;
    int _rate;
    int _layout;
};

}  // namespace recgen
