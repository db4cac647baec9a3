#pragma once

namespace testgain
{

// Crashes on demand, so that a host's isolation of the plug-ins it checks can
// be seen to work: TESTGAIN_CRASH="KIND@PLACE" in the environment makes the
// plug-in fail in one way at one kind of call. Kinds: "null" (a write
// through a null pointer), "abort", "stack" (an endless recursion), "loop"
// (it never returns), "heap" (a corrupted heap). Places, each reached by one
// check group of the host's validator: "text" (parsing a parameter's text),
// "rate" (a sample rate above 100 kHz), "name" (renaming a program), "chunk"
// (handing out a chunk), "midi" (receiving MIDI events), "editor" (opening
// the editor).
class TestGainCrash
{
public:
    enum class Place
    {
        none,
        text,
        rate,
        name,
        chunk,
        midi,
        editor,
    };

    // Reads the environment.
    TestGainCrash();

    // Fails here when this is the place asked for.
    void at(Place place) const;

private:
    enum class Kind
    {
        null_write,
        abort,
        stack_overflow,
        endless_loop,
        heap_corruption,
    };

    Kind _kind = Kind::abort;
    Place _place = Place::none;
};

}  // namespace testgain
