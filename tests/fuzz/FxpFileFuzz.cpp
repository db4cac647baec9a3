// Preset and bank files come from anywhere: the reader must refuse what does
// not fit without reading past the input, and whatever it accepts must write
// back to a file that reads the same again.
#include "tests/fuzz/FuzzCheck.h"
#include "tools/vsthost/FxFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    vsthost::FxFile file;
    if (vsthost::FxFile::read(data, size, file) == 0)
    {
        const std::vector<std::uint8_t> bytes = file.write();
        vsthost::FxFile again;
        zq_test::require(vsthost::FxFile::read(bytes.data(), bytes.size(), again) == 0 && again.write() == bytes);
    }
    return 0;
}
