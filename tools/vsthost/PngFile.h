#pragma once

#include "Image.h"

#include <string>

namespace vsthost
{

// PNG files of captured pictures. Both throw std::runtime_error with the
// file's name when it cannot be written or read.
class PngFile
{
public:
    static void write(const std::string& path, const Image& image);
    static Image read(const std::string& path);
};

}  // namespace vsthost
