#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

namespace zq_test
{

// A fresh folder below the system's temporary folder, removed with everything
// in it when the object goes. Named at random, so that test programs of
// several build trees can run at the same time.
class ScratchDir
{
public:
    ScratchDir() : _path(std::filesystem::temp_directory_path() / ("zq-test-" + make_unique_suffix()))
    {
        std::filesystem::create_directories(_path);
    }
    ~ScratchDir()
    {
        std::error_code ec;
        std::filesystem::remove_all(_path, ec);
    }
    ScratchDir(const ScratchDir&) = delete;
    ScratchDir& operator=(const ScratchDir&) = delete;

    std::string get_path() const { return _path.string(); }
    std::string get_path(const std::string& name) const { return (_path / name).string(); }

    // Writes the bytes as they are and answers the file's path.
    std::string write_file(const std::string& name, const std::string& bytes) const
    {
        const std::string path = get_path(name);
        std::ofstream(path, std::ios::binary) << bytes;
        return path;
    }

    static std::string make_unique_suffix()
    {
        std::random_device device;
        std::mt19937_64 gen((static_cast<unsigned long long>(device()) << 32) ^ device());
        return std::to_string(gen());
    }

private:
    std::filesystem::path _path;
};

}  // namespace zq_test
