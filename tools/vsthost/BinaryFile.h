#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vsthost
{

// Whole files in and out; both throw std::runtime_error naming the file.
std::vector<std::uint8_t> read_binary_file(const std::string& path);
void write_binary_file(const std::string& path, const std::vector<std::uint8_t>& bytes);

}  // namespace vsthost
