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

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i)
    {
        if (!std::filesystem::exists(argv[i]))
        {
            std::fprintf(stderr, "no corpus at %s\n", argv[i]);
            return 1;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i]))
        {
            if (entry.is_regular_file())
            {
                std::ifstream in(entry.path(), std::ios::binary);
                // Exactly the input's size, so a read past its end is caught by ASan.
                const std::vector<std::uint8_t> data{std::istreambuf_iterator<char>(in),
                                                     std::istreambuf_iterator<char>()};
                LLVMFuzzerTestOneInput(data.data(), data.size());
                ++count;
            }
        }
    }
    std::printf("replayed %d inputs\n", count);
    // An empty corpus replays nothing and would pass whatever the code does.
    return count > 0 ? 0 : 1;
}
