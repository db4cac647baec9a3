#pragma once

#include <vector>

namespace dsp
{

// Designs the coefficients of a polyphase IIR half-band filter made of two
// parallel chains of first-order all-pass stages (elliptic design after
// Valenzuela and Constantinides). attenuation_db is the stop-band rejection,
// transition the width of the transition band as a fraction of the sample rate
// (below 0.5). coefs is resized to the number of stages the design needs; every
// coefficient lies in (0, 1).
void design_half_band(std::vector<double>& coefs, double attenuation_db, double transition);

}  // namespace dsp
