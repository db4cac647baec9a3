#pragma once

#include <cstdint>

namespace zarquette
{

// Park and Miller's minimal standard generator (16807, modulo 2^31 - 1). The cat
// army and the loop engine each own one, both starting from state 1, so the
// effect's random behaviour repeats exactly from run to run.
class RndGen
{
public:
    virtual ~RndGen() = default;

    // Integer in [0, n); n must be positive.
    int gen_int(int n);
    // Float in (0, 1).
    float gen_float();
    // A draw in [0, 1] pulled towards a point set by centre, as strongly as amount
    // says (0: uniform, 1: clustered).
    float gen_shaped(float centre, float amount);

    std::int32_t get_state() const { return _state; }

private:
    void advance();

    std::int32_t _state = 1;
};

}  // namespace zarquette
