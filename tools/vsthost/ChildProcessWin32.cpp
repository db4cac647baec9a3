#include "ChildProcess.h"

#include "ArgumentQuote.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <stdexcept>

namespace vsthost
{

namespace
{

// How long a wait lasts before the pipe is looked at again: what the child
// writes shows that much later at most; its end is seen at once.
constexpr DWORD wait_slice_ms = 10;

// The exit code a killed child gets.
constexpr UINT killed_code = 0xDEAD;

// Children start from several threads at once: inheritable handles exist
// only between making a pipe and starting its child, so that no other child
// inherits one that is not its own and holds its pipe open.
std::mutex start_mutex;

std::string describe_error(const char* what)
{
    return std::string(what) + ": error " + std::to_string(GetLastError());
}

// This process's standard handle, made inheritable for the child.
HANDLE inheritable(DWORD which)
{
    HANDLE copy = nullptr;
    const HANDLE own = GetStdHandle(which);
    if (own == nullptr || own == INVALID_HANDLE_VALUE
        || !DuplicateHandle(GetCurrentProcess(), own, GetCurrentProcess(), &copy, 0, TRUE, DUPLICATE_SAME_ACCESS))
    {
        return nullptr;
    }
    return copy;
}

const char* name_exception(std::uint32_t code)
{
    struct Name
    {
        std::uint32_t code;
        const char* text;
    };
    static const Name names[] = {
        {0xC0000005, "access violation"},
        {0xC00000FD, "stack overflow"},
        {0xC0000374, "heap corruption"},
        {0xC0000409, "stack buffer overrun or fast fail"},
        {0xC000001D, "illegal instruction"},
        {0xC0000096, "privileged instruction"},
        {0xC0000094, "integer division by zero"},
        {0xC0000095, "integer overflow"},
        {0xC000008E, "floating-point division by zero"},
        {0xC0000090, "invalid floating-point operation"},
        {0xC0000025, "non-continuable exception"},
        {0xC0000026, "invalid exception disposition"},
        {0xC0000006, "in-page error"},
        {0x80000003, "breakpoint"},
        {0xE06D7363, "unhandled C++ exception"},
    };
    for (const Name& n : names)
    {
        if (n.code == code)
        {
            return n.text;
        }
    }
    return nullptr;
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& args)
{
    const std::lock_guard<std::mutex> lock(start_mutex);
    SECURITY_ATTRIBUTES inherit{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE read_end = nullptr;
    HANDLE write_end = nullptr;
    if (!CreatePipe(&read_end, &write_end, &inherit, 1 << 16))
    {
        throw std::runtime_error(describe_error("cannot make a pipe"));
    }
    SetHandleInformation(read_end, HANDLE_FLAG_INHERIT, 0);
    std::string line = quote_argument(program);
    for (const std::string& a : args)
    {
        line += " " + quote_argument(a);
    }
    line += " " + std::to_string(reinterpret_cast<std::uintptr_t>(write_end));
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = inheritable(STD_INPUT_HANDLE);
    startup.hStdOutput = inheritable(STD_OUTPUT_HANDLE);
    startup.hStdError = inheritable(STD_ERROR_HANDLE);
    PROCESS_INFORMATION info{};
    const BOOL started =
        CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &info);
    const std::string why = started ? std::string() : describe_error("cannot start a process");
    for (HANDLE h : {startup.hStdInput, startup.hStdOutput, startup.hStdError, write_end})
    {
        if (h != nullptr)
        {
            CloseHandle(h);
        }
    }
    if (!started)
    {
        CloseHandle(read_end);
        throw std::runtime_error(why);
    }
    CloseHandle(info.hThread);
    _process = reinterpret_cast<std::intptr_t>(info.hProcess);
    _pipe = reinterpret_cast<std::intptr_t>(read_end);
}

ChildProcess::~ChildProcess()
{
    kill();
    CloseHandle(reinterpret_cast<HANDLE>(_process));
    CloseHandle(reinterpret_cast<HANDLE>(_pipe));
}

bool ChildProcess::read(std::string& text, Clock::time_point deadline)
{
    const HANDLE pipe = reinterpret_cast<HANDLE>(_pipe);
    const HANDLE process = reinterpret_cast<HANDLE>(_process);
    for (;;)
    {
        // Only what is there is read, so that no read blocks past the deadline.
        DWORD available = 0;
        if (PeekNamedPipe(pipe, nullptr, 0, nullptr, &available, nullptr) && available > 0)
        {
            char buffer[4096];
            DWORD n = 0;
            if (ReadFile(pipe, buffer, std::min<DWORD>(available, sizeof buffer), &n, nullptr) && n > 0)
            {
                text.append(buffer, n);
                return true;
            }
        }
        if (!_running)
        {
            return false;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        const DWORD wait = static_cast<DWORD>(std::clamp<long long>(left, 0, wait_slice_ms));
        if (WaitForSingleObject(process, wait) == WAIT_OBJECT_0)
        {
            DWORD code = 0;
            GetExitCodeProcess(process, &code);
            finish(static_cast<int>(code));
            continue;
        }
        if (Clock::now() >= deadline)
        {
            return true;
        }
    }
}

void ChildProcess::finish(int status)
{
    _running = false;
    _end = {_killed ? ChildEnd::Kind::killed : ChildEnd::Kind::exited, static_cast<std::uint32_t>(status)};
}

void ChildProcess::kill()
{
    if (_running)
    {
        _killed = true;
        TerminateProcess(reinterpret_cast<HANDLE>(_process), killed_code);
        WaitForSingleObject(reinterpret_cast<HANDLE>(_process), INFINITE);
        finish(killed_code);
    }
}

std::string ChildProcess::describe(const ChildEnd& end)
{
    if (end.kind == ChildEnd::Kind::killed)
    {
        return "killed";
    }
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%08X", static_cast<unsigned>(end.code));
    if (const char* name = name_exception(end.code))
    {
        return std::string("exception ") + hex + " (" + name + ")";
    }
    // What abort() of a Windows C runtime leaves.
    if (end.code == 3)
    {
        return "exit code 3 (abort)";
    }
    return (end.code >= 0xC0000000 ? std::string("exception ") + hex : "exit code " + std::to_string(end.code));
}

std::string ChildProcess::get_own_path()
{
    std::string path(MAX_PATH, '\0');
    for (;;)
    {
        const DWORD n = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (n < path.size())
        {
            path.resize(n);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

}  // namespace vsthost
