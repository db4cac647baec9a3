#include "BinaryFile.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vsthost
{

std::vector<std::uint8_t> read_binary_file(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in)
    {
        throw std::runtime_error("cannot open " + path);
    }
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void write_binary_file(const std::string& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush())
    {
        throw std::runtime_error("cannot write " + path);
    }
}

}  // namespace vsthost
