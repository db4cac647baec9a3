#pragma once

namespace vsthost
{

// Counts the calls of the global operator new made on one thread while a
// scope is open, to find plug-ins that allocate while processing audio. It
// sees the allocations of plug-ins that share the host's C++ runtime (Linux
// plug-ins linked against the system's libstdc++); a Windows DLL brings its
// own runtime, so there it counts nothing and says so.
class AllocationCounter
{
public:
    static bool is_supported();
    // Opens counting on the calling thread; close() answers the calls made since.
    static void open();
    static long close();
};

}  // namespace vsthost
