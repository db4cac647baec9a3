// vsthost: a command-line VST 2 host for inspecting, rendering, storing and
// validating plug-ins.
#include "InfoCommand.h"
#include "PresetCommand.h"
#include "RenderCommand.h"
#include "ValidateCommand.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

namespace
{

const char* const usage =
    "usage: vsthost COMMAND PLUGIN [arguments]\n"
    "  info PLUGIN                      what the plug-in tells a host\n"
    "  render PLUGIN [IN.wav] -o OUT.wav [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE]\n"
    "         [--tempo BPM] [--rate HZ] [--block FRAMES] [--length SECONDS] [--pcm16]\n"
    "         [--midi-in FILE.mid] [--midi-out FILE.mid] [--automation-out FILE.csv]\n"
    "                                   process a WAV file or the built-in demo song (32-bit float\n"
    "                                   output unless --pcm16), playing a MIDI file into the plug-in,\n"
    "                                   writing the MIDI it sends and its parameters at every block\n"
    "  preset save PLUGIN FILE.fxp|FILE.fxb [--program N]\n"
    "  preset load PLUGIN FILE [--ignore-id]\n"
    "  validate PLUGIN [--level 1|2|3] [--rates R,R...] [--blocks B,B...] [--seed N] [--repeats N]\n"
    "                                   run the validation suite; non-zero exit on any failure\n";

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + std::min(argc, 2), argv + argc);
    const std::string command = argc > 1 ? argv[1] : "";
    try
    {
        if (command == "info")
        {
            return vsthost::InfoCommand::run(words, std::cout);
        }
        if (command == "render")
        {
            return vsthost::RenderCommand::run(words, std::cout);
        }
        if (command == "preset")
        {
            return vsthost::PresetCommand::run(words, std::cout);
        }
        if (command == "validate")
        {
            return vsthost::ValidateCommand::run(words, std::cout);
        }
        std::cerr << usage;
        return command == "help" || command == "--help" ? 0 : 2;
    }
    catch (const std::invalid_argument& e)
    {
        std::cerr << "vsthost: " << e.what() << "\n";
        return 2;
    }
    catch (const std::exception& e)
    {
        std::cerr << "vsthost: " << e.what() << "\n";
        return 1;
    }
}
