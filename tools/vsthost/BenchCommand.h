#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

class CommandLine;

// "vsthost bench PLUGIN [IN.wav] [--set NAME=TEXT ...]": how fast a plug-in
// renders. The dry signal (the demo song, or a WAV file) is prepared in memory
// first, then played through the plug-in several times; each pass gives a
// real-time factor from the processing thread's CPU time, and every block's
// wall time goes into a percentile.
class BenchCommand
{
public:
    struct Options
    {
        std::string plugin;
        std::string input;  // empty: the demo song
        double rate = 44100.0;
        int block = 512;
        double seconds = 10.0;
        int repeats = 5;
        double tempo = 120.0;
    };

    // Reads the words after "bench"; throws std::invalid_argument with the usage
    // or the reason when they do not make a bench.
    static Options parse(const CommandLine& args);
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
