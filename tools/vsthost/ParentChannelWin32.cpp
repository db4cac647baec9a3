#include "ParentChannel.h"

#include <windows.h>

#include <cstdlib>
#include <stdexcept>

namespace vsthost
{

namespace
{

// What the parent reads as the exit code: the exception's own code.
constexpr UINT heap_corruption = 0xC0000374;

// A crash nothing handled ends the process with its code.
LONG WINAPI end_on_crash(EXCEPTION_POINTERS* info)
{
    TerminateProcess(GetCurrentProcess(), info->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

ParentChannel::ParentChannel(const std::string& token)
{
    char* end = nullptr;
    const unsigned long long value = std::strtoull(token.c_str(), &end, 10);
    const HANDLE pipe = reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value));
    // Not passed on to processes the plug-in starts, so that none of them
    // keeps the parent's pipe open.
    if (token.empty() || *end != 0 || !SetHandleInformation(pipe, HANDLE_FLAG_INHERIT, 0))
    {
        throw std::invalid_argument("no report channel " + token);
    }
    _handle = static_cast<std::intptr_t>(value);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(&end_on_crash);
}

void ParentChannel::end_if_heap_corrupt()
{
    // Current Windows versions end a process whose heap they find damaged;
    // wine carries on. Every heap is walked so the damage is found either way.
    HANDLE heaps[256];
    const DWORD count = GetProcessHeaps(256, heaps);
    for (DWORD i = 0; i < count && i < 256; ++i)
    {
        if (!HeapValidate(heaps[i], 0, nullptr))
        {
            TerminateProcess(GetCurrentProcess(), heap_corruption);
        }
    }
}

ParentChannel::~ParentChannel()
{
    CloseHandle(reinterpret_cast<HANDLE>(_handle));
}

void ParentChannel::write(const std::string& text)
{
    const HANDLE pipe = reinterpret_cast<HANDLE>(_handle);
    std::size_t done = 0;
    while (done < text.size())
    {
        DWORD n = 0;
        if (!WriteFile(pipe, text.data() + done, static_cast<DWORD>(text.size() - done), &n, nullptr) || n == 0)
        {
            std::_Exit(1);
        }
        done += n;
    }
}

}  // namespace vsthost
