#pragma once

namespace vsthost
{

// Processor time spent so far, in seconds, so that other programs sharing the
// machine do not count against the plug-in: by the calling thread (the bench
// command's render loop, an editor's window thread, which does all its drawing
// and input there) and by the whole process.
class CpuClock
{
public:
    static double get_thread_seconds();
    static double get_process_seconds();

    // A clock fine enough to time a single block, in seconds: the thread's CPU
    // time where the system keeps it finely (Linux), the wall clock where it only
    // counts scheduler ticks (Windows). block_clock_name says which.
    static double get_block_seconds();
    static const char* const block_clock_name;
};

}  // namespace vsthost
