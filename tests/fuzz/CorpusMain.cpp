// Replays a fuzzer's corpus through its entry point: every file below the folders
// given on the command line is one input. Used as a regression test wherever
// libFuzzer itself is not available.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace
{

int replay_file(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    // A copy of exactly the input's size, so a read past its end is caught by ASan.
    std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return 1;
}

}  // namespace

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i)
    {
        const std::filesystem::path root(argv[i]);
        if (!std::filesystem::exists(root))
        {
            std::fprintf(stderr, "no corpus at %s\n", argv[i]);
            return 1;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
        {
            if (entry.is_regular_file())
            {
                count += replay_file(entry.path());
            }
        }
    }
    std::printf("replayed %d inputs\n", count);
    // An empty corpus replays nothing and would pass whatever the code does.
    return count > 0 ? 0 : 1;
}
