#pragma once

#include <string>
#include <vector>

namespace vsthost
{

// What "vsthost validate" checks and how hard.
struct ValidationOptions
{
    std::string path;
    // 1: the basic checks (life cycle, programs, state, parameters, audio);
    // 2: all checks; 3: all checks, longer and with more random values, and
    // text round trips that do not come back exactly fail instead of passing
    // with a note.
    int level = 2;
    std::vector<double> rates{44100, 48000, 96000, 192000};
    std::vector<int> blocks{1, 32, 64, 256, 512, 1024, 4096};
    unsigned seed = 1;
    int repeats = 1;
    // The check groups to run; empty for every group of the level.
    std::vector<std::string> groups;
    // Every group in this process, one after the other, rather than each in
    // a child process of its own.
    bool in_process = false;
    // How many groups' processes run at once: a process's start, slow under
    // emulators, then overlaps another group's checks.
    int jobs = 2;
    // The time a group's process may take per repeat before it is killed.
    double timeout_seconds = 60.0;
    // A library without a VST 2 entry point is skipped rather than failed:
    // for files found in a folder, which may hold other libraries.
    bool skip_non_plugins = false;

    // Scales the work of a check with the level: 1, 3 or 10 times the base.
    int scaled(int base) const { return base * (level <= 1 ? 1 : (level == 2 ? 3 : 10)); }
};

}  // namespace vsthost
