#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost compare A.png B.png": how many pixels differ and the boxes around
// the areas that changed. "vsthost compare A.wav B.wav": whether two renders
// sound the same (level, third-octave spectrum, the envelope's onsets on the
// 16th-note grid, clean samples), for renders that cannot be equal sample by
// sample; exits with 1 when they do not.
class CompareCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
