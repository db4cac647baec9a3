#pragma once

namespace vsthost
{

// Processor time spent so far, in seconds: by the calling thread (an editor's
// window thread does all its drawing and input there) and by the process.
class CpuClock
{
public:
    static double get_thread_seconds();
    static double get_process_seconds();
};

}  // namespace vsthost
