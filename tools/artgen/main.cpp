// artgen: draws the editor's artwork (background, knob bodies, switch states,
// drag pointer and bitmap font) and the files that embed it into the build: a
// Windows resource script and, for platforms without resources, a C++ table
// that registers it. It also writes every picture as PNG, and the editor
// screen composed from them, for people to look at.
//
//   artgen OUTPUT_FOLDER FONT_FOLDER
//
// writes OUTPUT_FOLDER/apic/<name>.apic, OUTPUT_FOLDER/artwork.rc,
// OUTPUT_FOLDER/ArtworkTable.cpp and OUTPUT_FOLDER/png/*.png. FONT_FOLDER
// holds Debian's misc-fixed bitmap fonts. Every run writes the same bytes.
#include "ArtworkSet.h"
#include "PreviewSheets.h"
#include "ResourceFiles.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace
{

std::string to_lower(std::string s)
{
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

bool write_file(const fs::path& path, const std::string& bytes)
{
    std::ofstream out(path, std::ios::binary);
    out << bytes;
    return static_cast<bool>(out);
}

bool write_previews(const artgen::ArtworkSet& set, const fs::path& dir)
{
    bool ok = true;
    for (const artgen::ArtworkSet::Resource& r : set.get_resources())
    {
        // The whole screen and the strip at their size; the small pictures
        // magnified, over grey so that their alpha shows.
        const artgen::Preview p = artgen::Preview::decode(r.bytes);
        const bool large = r.name == "BKG" || r.name == "FONT_03";
        const artgen::Preview shown = large ? p : p.on_grey(160).scaled(4);
        ok = shown.write_png((dir / (to_lower(r.name) + ".png")).string()) && ok;
    }
    const double resting[4] = {0.0, 0.0, 0.0, 0.0};
    const double playing[4] = {0.5, 0.8, 0.3, 1.0};
    ok = artgen::editor_screen(set, resting, 0).write_png((dir / "editor-resting.png").string()) && ok;
    const artgen::Preview editor = artgen::editor_screen(set, playing, 1);
    ok = editor.write_png((dir / "editor.png").string()) && ok;
    ok = editor.scaled(2).write_png((dir / "editor-2x.png").string()) && ok;
    ok = artgen::font_sheet(set, 3).write_png((dir / "font_03-sheet.png").string()) && ok;
    return ok;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
    {
        std::fprintf(stderr, "usage: artgen OUTPUT_FOLDER FONT_FOLDER\n");
        return 2;
    }
    try
    {
        const fs::path out = fs::absolute(argv[1]);
        fs::create_directories(out / "apic");
        fs::create_directories(out / "png");
        const artgen::ArtworkSet set(argv[2]);
        std::vector<artgen::EmbeddedFile> files;
        bool ok = true;
        for (const artgen::ArtworkSet::Resource& r : set.get_resources())
        {
            const fs::path path = out / "apic" / (to_lower(r.name) + ".apic");
            ok = write_file(path, std::string(r.bytes.begin(), r.bytes.end())) && ok;
            files.push_back({r.name, path, r.bytes.size()});
        }
        ok = write_file(out / "artwork.rc", artgen::make_resource_script("APIC", files)) && ok;
        ok = write_file(out / "ArtworkTable.cpp", artgen::make_resource_table("APIC", files)) && ok;
        ok = write_previews(set, out / "png") && ok;
        if (!ok)
        {
            std::fprintf(stderr, "artgen: cannot write into %s\n", out.string().c_str());
            return 1;
        }
        std::printf("artgen: %zu pictures in %s\n", files.size(), (out / "apic").string().c_str());
        return 0;
    }
    catch (const std::exception& e)
    {
        std::fprintf(stderr, "artgen: %s\n", e.what());
        return 1;
    }
}
