#pragma once

#include <cstdint>
#include <string>

namespace vsthost
{

// A child process's end of the channel that ChildProcess gave it, named by
// the token on its command line. Opening it also prepares the process for
// the plug-in it will host: on Windows a crash then ends it at once with the
// exception's code, rather than starting a debugger or showing a dialog.
class ParentChannel
{
public:
    // Throws std::invalid_argument when the token names no channel.
    explicit ParentChannel(const std::string& token);
    ParentChannel(const ParentChannel&) = delete;
    ParentChannel& operator=(const ParentChannel&) = delete;
    ~ParentChannel();

    // After a group: a heap the plug-in damaged ends the process as a crash
    // would, where the platform's allocator would not notice it by itself.
    void end_if_heap_corrupt();
    // Writes all of text. A parent that has gone leaves nobody to report to:
    // the process then ends.
    void write(const std::string& text);

private:
    std::intptr_t _handle = -1;
};

}  // namespace vsthost
