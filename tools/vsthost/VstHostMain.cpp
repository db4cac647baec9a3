// vsthost: a command-line VST 2 host for inspecting, rendering, storing and
// validating plug-ins.
#include "BenchCommand.h"
#include "CompareCommand.h"
#include "DemoCommand.h"
#include "EditorBenchCommand.h"
#include "EditorCommand.h"
#include "EditorStressCommand.h"
#include "InfoCommand.h"
#include "PresetCommand.h"
#include "RenderCommand.h"
#include "ScreenshotCommand.h"
#include "ValidateCommand.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
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
    "  validate PLUGIN|FOLDER... [--level 1|2|3] [--rates R,R...] [--blocks B,B...] [--seed N]\n"
    "         [--repeats N] [--group NAME,NAME...] [--timeout SECONDS] [--jobs N] [--in-process]\n"
    "         [--json FILE]\n"
    "                                   run the validation suite, each check group in a process of\n"
    "                                   its own; non-zero exit on any failure\n"
    "  bench PLUGIN [IN.wav] [--set NAME=TEXT] [--block FRAMES] [--rate HZ] [--seconds S] [--repeats N]\n"
    "                                   real-time factor (min, median, max over the passes) and the\n"
    "                                   99th percentile of the time per block\n"
    "  editor PLUGIN [IN.wav] [--set NAME=TEXT] [--norm NAME=VALUE] [--preset FILE] [--seconds S]\n"
    "                                   show the editor while audio loops, until its window closes\n"
    "  screenshot PLUGIN [IN.wav] -o editor.png [--set NAME=TEXT] [--after-ms N] [--before FILE.png]\n"
    "         [--mouse SCRIPT] [--step-ms N] [--print-params] [--diff OTHER.png] [--settings-first]\n"
    "                                   capture the editor's window as PNG, optionally after\n"
    "                                   parameter changes and a mouse script\n"
    "  editor-stress PLUGIN [--cycles N] [--instances K] [--idle-ms N]\n"
    "                                   open and close editors repeatedly; non-zero exit on leaks\n"
    "  editor-bench PLUGIN [--seconds S] [--frames N]\n"
    "                                   the open editor's idle cost and the time of a whole frame\n"
    "  compare A.png B.png [--tolerance N] [--zoom N]\n"
    "                                   count changed pixels and box the changed areas (A enlarged\n"
    "                                   N times first, as an editor zoomed by N draws it)\n"
    "  compare A.wav B.wav [--tempo BPM] [--rms-db DB] [--band-db DB]\n"
    "                                   whether two renders sound the same (RMS, third-octave\n"
    "                                   bands, onsets on the 16th-note grid, clean samples);\n"
    "                                   exits with 1 when they do not\n"
    "  demo -o OUT.wav [--rate HZ] [--tempo BPM] [--length SECONDS]\n"
    "                                   write the built-in demo song, the dry signal of render\n"
    "Editors open in a window of the system's: Win32, or X11 on the display DISPLAY names.\n"
    "SCRIPT steps, separated by ';': down X Y, up X Y,\n"
    "rdown X Y, rup X Y, click X Y, dblclick X Y, move X Y [STEPS], wheel X Y DELTA, wait MS\n";

using Command = int (*)(const std::vector<std::string>& words, std::ostream& out);

const std::pair<const char*, Command> commands[] = {
    {"info", &vsthost::InfoCommand::run},
    {"render", &vsthost::RenderCommand::run},
    {"preset", &vsthost::PresetCommand::run},
    {"validate", &vsthost::ValidateCommand::run},
    {"bench", &vsthost::BenchCommand::run},
    {"editor", &vsthost::EditorCommand::run},
    {"screenshot", &vsthost::ScreenshotCommand::run},
    {"editor-stress", &vsthost::EditorStressCommand::run},
    {"editor-bench", &vsthost::EditorBenchCommand::run},
    {"compare", &vsthost::CompareCommand::run},
    {"demo", &vsthost::DemoCommand::run},
};

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + std::min(argc, 2), argv + argc);
    const std::string command = argc > 1 ? argv[1] : "";
    try
    {
        for (const auto& [name, run] : commands)
        {
            if (command == name)
            {
                return run(words, std::cout);
            }
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
