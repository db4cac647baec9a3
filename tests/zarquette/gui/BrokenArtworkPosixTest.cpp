// Artwork that is missing or broken stops the editor at init with its error,
// whichever picture or font it is. A table registered later shadows the
// embedded one, which stands in for a damaged resource section.
#include "zarquette/gui/ZarquetteGui.h"

#include "sys/ResourceTable.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

const std::uint8_t kGarbage[] = {'A', 'P', 'I', 'C', 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3};

}  // namespace

TEST(BrokenArtwork, AnyBrokenPictureOrFontStopsInitWithItsError)
{
    for (const char* name : {"arw_06", "kn_04_spn", "ff_01_01", "bkg", "font_03"})
    {
        const sys::ResourceTable::Entry broken[] = {{"APIC", name, kGarbage, sizeof kGarbage}};
        const sys::ResourceTable shadow(broken, 1);
        EXPECT_THROW(zarquette::ZarquetteGui().init(), std::runtime_error) << name;
    }
    const sys::ResourceTable::Entry empty[] = {{"APIC", "kn_01_spn", kGarbage, 0}};
    const sys::ResourceTable shadow(empty, 1);
    EXPECT_THROW(zarquette::ZarquetteGui().init(), std::runtime_error);
}
