#include "TestGainCrash.h"

#include <cstdlib>
#include <string>
#include <utility>

namespace testgain
{

namespace
{

// Read through volatile, so that the compiler can neither prove the pointer
// null (and trap instead of writing) nor bound the recursion or the loop.
int* volatile null_target = nullptr;
volatile bool forever = true;
volatile int depth_sink = 0;

// A real fault, not a sanitizer's report of one: the host's tests want to
// see the process die of it.
__attribute__((noinline, no_sanitize("undefined"))) void write_through_null()
{
    *null_target = 1;
}

// Frames larger than a page, as a big buffer on the stack makes them: the
// stack is then probed page by page, and wine, too, reports the overflow
// rather than dying of it without a word.
int recurse(int depth)
{
    volatile char frame[8192];
    frame[0] = static_cast<char>(depth);
    if (forever)
    {
        depth_sink = recurse(depth + 1);
    }
    return frame[0] + depth_sink;
}

void corrupt_heap()
{
    // An underrun that zeroes the block's own bookkeeping, then the block is
    // freed: glibc refuses the free and aborts; a Windows heap finds the
    // damage whenever it is next checked.
    // Through volatile, so that the compiler neither drops the stores to a
    // block that is freed next nor sees them fall outside it.
    char* volatile block = static_cast<char*>(std::malloc(32));
    volatile char* header = block - 16;
    for (int i = 0; i < 16; ++i)
    {
        header[i] = 0;
    }
    std::free(block);
}

}  // namespace

TestGainCrash::TestGainCrash()
{
    static const std::pair<const char*, Kind> kinds[] = {{"null", Kind::null_write},
                                                         {"abort", Kind::abort},
                                                         {"stack", Kind::stack_overflow},
                                                         {"loop", Kind::endless_loop},
                                                         {"heap", Kind::heap_corruption}};
    static const std::pair<const char*, Place> places[] = {{"text", Place::text}, {"rate", Place::rate},
                                                           {"name", Place::name}, {"chunk", Place::chunk},
                                                           {"midi", Place::midi}, {"editor", Place::editor}};
    const char* request = std::getenv("TESTGAIN_CRASH");
    const std::string text = request != nullptr ? request : "";
    const std::size_t at = text.find('@');
    for (const auto& [kind_name, kind] : kinds)
    {
        for (const auto& [place_name, place] : places)
        {
            if (at != std::string::npos && text.substr(0, at) == kind_name && text.substr(at + 1) == place_name)
            {
                _kind = kind;
                _place = place;
            }
        }
    }
}

void TestGainCrash::at(Place place) const
{
    if (_place == Place::none || place != _place)
    {
        return;
    }
    switch (_kind)
    {
    case Kind::null_write:
        write_through_null();
        break;
    case Kind::abort:
        std::abort();
    case Kind::stack_overflow:
        depth_sink = recurse(0);
        break;
    case Kind::endless_loop:
        while (forever)
        {
        }
        break;
    case Kind::heap_corruption:
        corrupt_heap();
        break;
    }
}

}  // namespace testgain
