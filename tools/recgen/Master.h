#pragma once

#include <cstdint>
#include <vector>

namespace recgen
{

// Turns a raw mix into 16-bit samples fit to ship: no DC offset, short fades
// at both ends so that starting or ending playback never clicks, and the peak
// at the given level.
class Master
{
public:
    Master(double rate, double peak_db) : _rate(rate), _peak_db(peak_db) {}

    std::vector<std::int16_t> finish(std::vector<float> samples) const;

private:
    void remove_dc(std::vector<float>& s) const;
    void fade(std::vector<float>& s) const;
    std::vector<std::int16_t> quantise(const std::vector<float>& s) const;

    double _rate;
    double _peak_db;
};

}  // namespace recgen
