#pragma once

// Counts the calls of the global operator new made on the calling thread while
// it lives. The test program replaces operator new for this (see the .cpp), so
// code that must not allocate, such as rendering, can be checked.
class AllocationCounter
{
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    long get_count() const { return _count; }

private:
    long _count = 0;
};
