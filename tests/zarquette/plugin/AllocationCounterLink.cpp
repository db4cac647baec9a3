// The plug-in's tests count allocations with the engine tests' counter.
#include "tests/zarquette/AllocationCounter.cpp"
