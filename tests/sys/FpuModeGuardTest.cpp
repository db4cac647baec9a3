#include "sys/FpuModeGuard.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{

volatile float sink;

float tiny_product()
{
    volatile float a = std::numeric_limits<float>::min();
    volatile float b = 0.25f;
    return a * b;  // a denormal unless flushed
}

// A host that rounds towards zero (both units) and unmasks division by zero:
// audio calls get nearest rounding, masked exceptions and flushed denormals,
// other calls keep denormals, and the host's modes come back after each.
TEST(FpuModeGuard, SetsTheModesAudioNeedsAndRestoresTheHosts)
{
    const std::uint16_t x87 = sys::FpuModeGuard::read_x87_control();
    const std::uint32_t sse = sys::FpuModeGuard::read_sse_control();
    sys::FpuModeGuard::write_x87_control(static_cast<std::uint16_t>((x87 | 0x0c00) & ~0x0004));
    sys::FpuModeGuard::write_sse_control((sse | 0x6000) & ~0x0200u);
    const std::uint16_t host_x87 = sys::FpuModeGuard::read_x87_control();
    const std::uint32_t host_sse = sys::FpuModeGuard::read_sse_control();
    {
        sys::FpuModeGuard guard(sys::FpuModeGuard::Denormals::flush);
        EXPECT_EQ(sys::FpuModeGuard::read_x87_control() & 0x0c00, 0);
        EXPECT_EQ(sys::FpuModeGuard::read_x87_control() & 0x003f, 0x003f);
        EXPECT_EQ(sys::FpuModeGuard::read_sse_control() & 0x6000u, 0u);
        EXPECT_EQ(sys::FpuModeGuard::read_sse_control() & 0x8040u, 0x8040u);
        EXPECT_EQ(tiny_product(), 0.0f);
        volatile float zero = 0.0f;
        sink = 1.0f / zero;  // masked: no trap
    }
    EXPECT_EQ(sys::FpuModeGuard::read_x87_control(), host_x87);
    EXPECT_EQ(sys::FpuModeGuard::read_sse_control() & ~0x3fu, host_sse & ~0x3fu);
    {
        sys::FpuModeGuard guard(sys::FpuModeGuard::Denormals::keep);
        EXPECT_EQ(sys::FpuModeGuard::read_sse_control() & 0x8040u, 0u);
        EXPECT_GT(tiny_product(), 0.0f);
    }
    sys::FpuModeGuard::write_x87_control(x87);
    sys::FpuModeGuard::write_sse_control(sse);
}

}  // namespace
