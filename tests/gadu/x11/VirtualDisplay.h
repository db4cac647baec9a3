#pragma once

// A virtual X server of the test's own, so that X11 tests need no display
// from the machine, never share one with tests running beside them, and may
// end their server on purpose. The server picks a free display number itself
// and tells it through a pipe.

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace gadu_test
{

class VirtualDisplay
{
public:
    VirtualDisplay() : VirtualDisplay(1280, 1024) {}

    // Width x height at 24-bit colour.
    VirtualDisplay(int width, int height)
    {
        int fds[2];
        if (pipe(fds) != 0)
        {
            return;
        }
        const std::string screen = std::to_string(width) + "x" + std::to_string(height) + "x24";
        const std::string fd = std::to_string(fds[1]);
        _pid = fork();
        if (_pid == 0)
        {
            close(fds[0]);
            const int null = open("/dev/null", O_WRONLY);
            dup2(null, STDERR_FILENO);
            dup2(null, STDOUT_FILENO);
            execlp("Xvfb", "Xvfb", "-displayfd", fd.c_str(), "-screen", "0", screen.c_str(), "-nolisten", "tcp",
                   "-noreset", static_cast<char*>(nullptr));
            _exit(127);
        }
        close(fds[1]);
        // The server writes its display number and a line end once it listens.
        std::FILE* number_pipe = fdopen(fds[0], "r");
        int number = -1;
        if (std::fscanf(number_pipe, "%d", &number) == 1)
        {
            _name = ":" + std::to_string(number);
        }
        std::fclose(number_pipe);
    }

    ~VirtualDisplay() { end(); }
    VirtualDisplay(const VirtualDisplay&) = delete;
    VirtualDisplay& operator=(const VirtualDisplay&) = delete;

    // ":N", or empty when the server did not start.
    const std::string& get_name() const { return _name; }

    // Ends the server now, as a crash or a logout would.
    void end()
    {
        if (_pid > 0)
        {
            kill(_pid, SIGTERM);
            waitpid(_pid, nullptr, 0);
            _pid = -1;
        }
    }

private:
    pid_t _pid = -1;
    std::string _name;
};

}  // namespace gadu_test
