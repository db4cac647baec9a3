#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// "vsthost screenshot PLUGIN -o editor.png": opens the plug-in's editor while
// audio runs, applies parameter changes, optionally plays a mouse script,
// and writes the window's pixels as PNG; it can print the parameters and the
// gestures the host saw, and compare the capture with another picture.
class ScreenshotCommand
{
public:
    static int run(const std::vector<std::string>& words, std::ostream& out);
};

}  // namespace vsthost
