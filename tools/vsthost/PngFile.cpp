#include "PngFile.h"

#include <algorithm>
#include <stdexcept>

#define STBI_ONLY_PNG
#define STB_IMAGE_IMPLEMENTATION
#include <stb_image.h>
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace vsthost
{

void PngFile::write(const std::string& path, const Image& image)
{
    if (image.width <= 0 || image.height <= 0 ||
        stbi_write_png(path.c_str(), image.width, image.height, 4, image.rgba.data(), image.width * 4) == 0)
    {
        throw std::runtime_error("cannot write " + path);
    }
}

Image PngFile::read(const std::string& path)
{
    int width = 0;
    int height = 0;
    int channels = 0;
    stbi_uc* pixels = stbi_load(path.c_str(), &width, &height, &channels, 4);
    if (pixels == nullptr)
    {
        throw std::runtime_error("cannot read " + path + " as PNG");
    }
    Image image(width, height);
    std::copy(pixels, pixels + image.rgba.size(), image.rgba.begin());
    stbi_image_free(pixels);
    return image;
}

}  // namespace vsthost
