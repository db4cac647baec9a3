#pragma once

#include <vector>

namespace dsp
{

// Halves the sample rate through a polyphase IIR half-band filter.
class Downsampler2xInterface
{
public:
    virtual ~Downsampler2xInterface() = default;

    // Coefficients from a design (converted to float) or copied as they are.
    virtual void load_coefs(const std::vector<double>& coefs) = 0;
    virtual void copy_coefs(const float* coefs) = 0;

    // One output sample from two consecutive input samples.
    virtual float downsample_pair(float in0, float in1) = 0;
    // out[i] = downsample_pair(in[2i], in[2i + 1]) for i in [0, count).
    virtual void downsample_block(float* out, const float* in, int count) = 0;

    virtual void clear_state() = 0;
    // False when any stage's previous output has become a denormal.
    virtual bool state_is_normal() const = 0;
};

}  // namespace dsp
