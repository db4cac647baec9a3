#include "ChildProcess.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vsthost
{

namespace
{

// Short enough that a child that ended while another process still holds
// its pipe (a helper the plug-in started) is noticed at once.
constexpr int poll_slice_ms = 50;

int get_wait_ms(ChildProcess::Clock::time_point deadline)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - ChildProcess::Clock::now());
    return static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(left.count(), 0, poll_slice_ms));
}

}  // namespace

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& args)
{
    int fds[2];
    // Close-on-exec, so that no other child started meanwhile keeps the
    // pipe open; the child clears it on its own end only.
    if (pipe2(fds, O_CLOEXEC) != 0)
    {
        throw std::runtime_error(std::string("cannot make a pipe: ") + std::strerror(errno));
    }
    std::vector<std::string> words{program};
    words.insert(words.end(), args.begin(), args.end());
    words.push_back(std::to_string(fds[1]));
    std::vector<char*> argv;
    for (std::string& w : words)
    {
        argv.push_back(w.data());
    }
    argv.push_back(nullptr);
    const pid_t pid = fork();
    if (pid == 0)
    {
        // Only async-signal-safe calls until exec.
        fcntl(fds[1], F_SETFD, 0);
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    close(fds[1]);
    if (pid < 0)
    {
        close(fds[0]);
        throw std::runtime_error(std::string("cannot start a process: ") + std::strerror(errno));
    }
    _process = pid;
    _pipe = fds[0];
}

ChildProcess::~ChildProcess()
{
    kill();
    close(static_cast<int>(_pipe));
}

bool ChildProcess::read(std::string& text, Clock::time_point deadline)
{
    const int fd = static_cast<int>(_pipe);
    for (;;)
    {
        pollfd p{fd, POLLIN, 0};
        // Once the child is gone, only what it left in the pipe is read, without waiting.
        const int ready = poll(&p, 1, _running ? get_wait_ms(deadline) : 0);
        if (ready > 0)
        {
            char buffer[4096];
            const ssize_t n = ::read(fd, buffer, sizeof buffer);
            if (n > 0)
            {
                text.append(buffer, static_cast<std::size_t>(n));
                return true;
            }
        }
        if (!_running)
        {
            return false;
        }
        int status = 0;
        if (waitpid(static_cast<pid_t>(_process), &status, WNOHANG) == static_cast<pid_t>(_process))
        {
            finish(status);
            continue;
        }
        if (Clock::now() >= deadline)
        {
            return true;
        }
        if (ready > 0)
        {
            // The pipe closed: the child is ending (its files close a moment
            // before it can be waited for), or it closed the pipe and lives on.
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
}

void ChildProcess::finish(int status)
{
    _running = false;
    if (_killed)
    {
        _end = {ChildEnd::Kind::killed, 0};
    }
    else if (WIFSIGNALED(status))
    {
        _end = {ChildEnd::Kind::signalled, static_cast<std::uint32_t>(WTERMSIG(status))};
    }
    else
    {
        _end = {ChildEnd::Kind::exited, static_cast<std::uint32_t>(WEXITSTATUS(status))};
    }
}

void ChildProcess::kill()
{
    if (_running)
    {
        _killed = true;
        ::kill(static_cast<pid_t>(_process), SIGKILL);
        int status = 0;
        waitpid(static_cast<pid_t>(_process), &status, 0);
        finish(status);
    }
}

std::string ChildProcess::describe(const ChildEnd& end)
{
    switch (end.kind)
    {
    case ChildEnd::Kind::killed:
        return "killed";
    case ChildEnd::Kind::signalled:
    {
        const char* abbrev = sigabbrev_np(static_cast<int>(end.code));
        std::string text = strsignal(static_cast<int>(end.code));
        text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
        return "signal " + std::to_string(end.code) + " (" + (abbrev != nullptr ? std::string("SIG") + abbrev + ", " : "")
               + text + ")";
    }
    case ChildEnd::Kind::exited:
        break;
    }
    return "exit code " + std::to_string(end.code);
}

std::string ChildProcess::get_own_path()
{
    char path[4096];
    const ssize_t n = readlink("/proc/self/exe", path, sizeof path - 1);
    return n > 0 ? std::string(path, static_cast<std::size_t>(n)) : "/proc/self/exe";
}

}  // namespace vsthost
