#pragma once

#include <vector>

namespace beret_test
{

// Work buffers the way the processor lends them to the loop engine, big enough
// for a whole test run in one call when a test wants that.
struct Buffers
{
    explicit Buffers(std::size_t n) : in(n, 0.0f), out(n, 0.0f), scratch(n, 0.0f) {}

    std::vector<float> in;
    std::vector<float> out;
    std::vector<float> scratch;
};

}  // namespace beret_test
