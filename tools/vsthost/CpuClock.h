#pragma once

namespace vsthost
{

// Processor time the calling thread has used, in seconds: what the bench
// command divides the rendered audio by, so that other programs sharing the
// machine do not count against the plug-in.
double get_thread_cpu_seconds();

// A clock fine enough to time a single block, in seconds: the thread's CPU time
// where the system keeps it finely (Linux), the wall clock where it only
// counts scheduler ticks (Windows). block_clock_name says which.
double get_block_clock_seconds();
extern const char* const block_clock_name;

}  // namespace vsthost
