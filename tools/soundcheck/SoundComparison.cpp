#include "tools/soundcheck/SoundComparison.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace soundcheck
{
namespace
{

std::string db_pair(double a, double b)
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << a << " dB against " << b << " dB";
    return text.str();
}

bool is_decided(char c)
{
    return c == SoundProfile::onset || c == SoundProfile::no_onset;
}

}  // namespace

SoundComparison::SoundComparison(const SoundProfile& a, const SoundProfile& b, const Tolerances& tolerances)
    : _a(a), _b(b)
{
    compare_levels(tolerances);
    compare_onsets();
    check_samples(a, "A");
    check_samples(b, "B");
}

void SoundComparison::compare_levels(const Tolerances& tolerances)
{
    if (!(std::fabs(_a.rms_db - _b.rms_db) <= tolerances.rms_db))
    {
        _differences.push_back("RMS " + db_pair(_a.rms_db, _b.rms_db));
    }
    if (_a.band_db.size() != _b.band_db.size())
    {
        _differences.emplace_back("the profiles have different bands");
        return;
    }
    const std::vector<double> centres = SoundProfile::get_band_centres();
    for (std::size_t i = 0; i < _a.band_db.size() && i < centres.size(); ++i)
    {
        if (!(std::fabs(_a.band_db[i] - _b.band_db[i]) <= tolerances.band_db))
        {
            _differences.push_back("band " + std::to_string(std::lround(centres[i])) + " Hz: " +
                                   db_pair(_a.band_db[i], _b.band_db[i]));
        }
    }
}

// Only the 16th notes both renders cover count; an unclear rise in either
// decides nothing.
void SoundComparison::compare_onsets()
{
    const std::size_t n = std::min(_a.onsets.size(), _b.onsets.size());
    for (std::size_t k = 0; k < n; ++k)
    {
        const char a = _a.onsets[k];
        const char b = _b.onsets[k];
        if (a != b && is_decided(a) && is_decided(b))
        {
            _differences.push_back("16th note " + std::to_string(k) + ": an onset in " +
                                   (a == SoundProfile::onset ? "A" : "B") + " only");
        }
    }
}

void SoundComparison::check_samples(const SoundProfile& p, const char* name)
{
    if (p.nan_count + p.inf_count + p.subnormal_count != 0)
    {
        _differences.push_back(std::string(name) + " has " + std::to_string(p.nan_count) + " NaN, " +
                               std::to_string(p.inf_count) + " infinite and " + std::to_string(p.subnormal_count) +
                               " subnormal samples");
    }
}

void SoundComparison::print(std::ostream& out) const
{
    out << "A: ";
    _a.print(out);
    out << "\nB: ";
    _b.print(out);
    out << "\n" << (is_same() ? "same sound" : "different sound") << "\n";
    for (const std::string& d : _differences)
    {
        out << "  " << d << "\n";
    }
}

}  // namespace soundcheck
