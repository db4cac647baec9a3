#include "sys/FpuModeGuard.h"

#include <xmmintrin.h>

namespace sys
{
namespace
{

// x87 control word: exception masks in bits 0-5, rounding control in bits 10-11.
constexpr std::uint16_t x87_masks = 0x003f;
constexpr std::uint16_t x87_rounding = 0x0c00;
// MXCSR: exception flags 0-5, denormals-are-zero 6, masks 7-12, rounding 13-14,
// flush-to-zero 15.
constexpr std::uint32_t sse_daz = 0x0040;
constexpr std::uint32_t sse_masks = 0x1f80;
constexpr std::uint32_t sse_rounding = 0x6000;
constexpr std::uint32_t sse_ftz = 0x8000;

}  // namespace

std::uint16_t FpuModeGuard::read_x87_control()
{
    std::uint16_t cw = 0;
    __asm__ __volatile__("fnstcw %0" : "=m"(cw));
    return cw;
}

void FpuModeGuard::write_x87_control(std::uint16_t cw)
{
    __asm__ __volatile__("fldcw %0" : : "m"(cw));
}

std::uint32_t FpuModeGuard::read_sse_control()
{
    return _mm_getcsr();
}

void FpuModeGuard::write_sse_control(std::uint32_t csr)
{
    _mm_setcsr(csr);
}

FpuModeGuard::FpuModeGuard(Denormals denormals)
    : _saved_x87(read_x87_control()), _saved_sse(read_sse_control())
{
    write_x87_control(static_cast<std::uint16_t>((_saved_x87 & ~x87_rounding) | x87_masks));
    std::uint32_t csr = (_saved_sse & ~(sse_rounding | sse_daz | sse_ftz)) | sse_masks;
    if (denormals == Denormals::flush)
    {
        csr |= sse_daz | sse_ftz;
    }
    write_sse_control(csr);
}

FpuModeGuard::~FpuModeGuard()
{
    write_x87_control(_saved_x87);
    write_sse_control(_saved_sse);
}

}  // namespace sys
