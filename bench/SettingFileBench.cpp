// The settings files a hostile or broken tool could leave for the plug-in to
// read at start-up: as large as the reader accepts, nested as deep as the
// reader accepts, with all the bulk at the bottom, where a reader that copies
// finished subtrees into their parents would copy it once per level.
#include "basic/ConfKeyTokenizer.h"
#include "basic/SettingMgrInterface.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

constexpr int depth = basic::ConfKeyTokenizer::max_depth;

// Sections inside sections, the innermost one holding a leaf whose value is
// a long list of one-letter words.
std::string make_nested_sections(std::size_t size)
{
    std::string open;
    std::string close;
    for (int level = 1; level < depth; ++level)
    {
        open += "s = {\n";
        close += "}\n";
    }
    std::string text = open + "leaf = {";
    const std::size_t words = (size - text.size() - close.size() - 4) / 2;
    for (std::size_t i = 0; i < words; ++i)
    {
        text += " x";
    }
    return text + " }\n" + close;
}

// Lists inside lists, each level holding the next one and a word.
std::string make_nested_lists(std::size_t size)
{
    std::string text = "top = { leaf =";
    const std::size_t words = (size - text.size() - 6 * depth - 4) / 2;
    for (int level = 1; level < depth; ++level)
    {
        text += " { w";
    }
    for (std::size_t i = 0; i < words; ++i)
    {
        text += " x";
    }
    for (int level = 1; level < depth; ++level)
    {
        text += " }";
    }
    return text + " }\n";
}

void load_file(benchmark::State& state, std::string (*make)(std::size_t))
{
    const auto size = static_cast<std::size_t>(state.range(0));
    const std::string path =
        (std::filesystem::temp_directory_path() / ("zq-bench-" + std::to_string(size) + ".cfg")).string();
    std::ofstream(path, std::ios::binary) << make(size);
    basic::SettingMgrInterface mgr;
    for (auto _ : state)
    {
        const int result = mgr.load(path);
        benchmark::DoNotOptimize(result);
        if (result != 0)
        {
            state.SkipWithError("the file did not load");
            break;
        }
    }
    std::remove(path.c_str());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
}

void BM_LoadNestedSections(benchmark::State& state)
{
    load_file(state, make_nested_sections);
}

void BM_LoadNestedLists(benchmark::State& state)
{
    load_file(state, make_nested_lists);
}

constexpr std::int64_t largest = static_cast<std::int64_t>(basic::SettingMgrInterface::max_file_size);

}  // namespace

BENCHMARK(BM_LoadNestedSections)->Arg(1 << 20)->Arg(largest)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LoadNestedLists)->Arg(1 << 20)->Arg(largest)->Unit(benchmark::kMillisecond);
