#pragma once

#include <cstdint>

namespace sys
{

// Saves the caller's floating-point modes (x87 control word and the SSE control
// and status register) and sets the ones our code is written for: round to
// nearest, all exceptions masked and, for audio calls, denormals flushed to
// zero on output and taken as zero on input. The destructor restores exactly
// what the caller had, so a host's own settings survive every call into us.
class FpuModeGuard
{
public:
    enum class Denormals
    {
        keep,
        flush
    };

    explicit FpuModeGuard(Denormals denormals);
    ~FpuModeGuard();
    FpuModeGuard(const FpuModeGuard&) = delete;
    FpuModeGuard& operator=(const FpuModeGuard&) = delete;

    // The registers as they are now; for tests.
    static std::uint16_t read_x87_control();
    static std::uint32_t read_sse_control();
    static void write_x87_control(std::uint16_t cw);
    static void write_sse_control(std::uint32_t csr);

private:
    std::uint16_t _saved_x87;
    std::uint32_t _saved_sse;
};

}  // namespace sys
