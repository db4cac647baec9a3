#pragma once

#include <atomic>
#include <cstdint>

namespace lumo
{

// The plug-in's shared idea of the tempo: the tempo parameter writes it when it
// leads and reads it when the host leads. Written and read on different threads.
struct TempoRecord
{
    std::int32_t kind = 2;
    std::atomic<double> bpm{120.0};
};

}  // namespace lumo
