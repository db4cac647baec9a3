// The LV2 tests count allocations with the engine tests' counter.
#include "tests/zarquette/AllocationCounter.cpp"
