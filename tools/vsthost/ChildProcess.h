#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace vsthost
{

// How a child process ended.
struct ChildEnd
{
    enum class Kind
    {
        exited,     // with an exit code; on Windows a crash ends so, with the exception's code
        signalled,  // by a signal (POSIX)
        killed,     // by kill(), after the time limit
    };
    Kind kind = Kind::exited;
    std::uint32_t code = 0;
};

// A program started as a child process, with a channel of its own on which
// it writes to this process: a pipe whose name (a file descriptor or a
// handle number) is added to its arguments as the last one. Its standard
// streams are this process's, so that whatever a plug-in prints there still
// shows.
class ChildProcess
{
public:
    using Clock = std::chrono::steady_clock;

    // Throws std::runtime_error when the program cannot be started.
    ChildProcess(const std::string& program, const std::vector<std::string>& args);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    // A child still running is killed.
    ~ChildProcess();

    // Appends what the child wrote to text, waiting until something comes,
    // the child ends or the deadline passes. Answers false once the child
    // has ended and everything it wrote was read.
    bool read(std::string& text, Clock::time_point deadline);
    // Ends the child at once and waits for it; read() still gives what it
    // wrote before.
    void kill();
    // How the child ended, once read() answered false.
    const ChildEnd& get_end() const { return _end; }

    // In a user's words: "exit code 3", "signal 11 (SIGSEGV, invalid memory
    // reference)", "exception 0xC0000005 (access violation)".
    static std::string describe(const ChildEnd& end);
    // The file of the running program, to start it again as a child.
    static std::string get_own_path();

private:
    void finish(int status);

    std::intptr_t _process = -1;
    std::intptr_t _pipe = -1;
    bool _running = true;
    bool _killed = false;
    ChildEnd _end;
};

}  // namespace vsthost
