#include "ArtworkSet.h"

#include "Apic.h"
#include "Artwork.h"
#include "FontStrip.h"

#include <stdexcept>

namespace artgen
{

ArtworkSet::ArtworkSet(const std::string& font_folder)
{
    const PcfFont small(font_folder + "/6x12-ISO8859-1.pcf.gz");
    const PcfFont label(font_folder + "/9x18B-ISO8859-1.pcf.gz");
    const PcfFont title(font_folder + "/12x24.pcf.gz");
    const Lettering fonts{small, label, title};

    _resources.push_back({"BKG", apic::encode_opaque(artwork::background(fonts))});
    for (const KnobLayout& k : knob_layouts)
    {
        _resources.push_back({k.resource, apic::encode_alpha(artwork::knob(k))});
    }
    _resources.push_back({"FF_01_00", apic::encode_alpha(artwork::switch_state(0))});
    _resources.push_back({"FF_01_01", apic::encode_alpha(artwork::switch_state(1))});
    _resources.push_back({"ARW_06", apic::encode_white_mask(artwork::arrow())});
    const FontStrip strip(small);
    _resources.push_back({"FONT_03", apic::encode_unicolour_font(strip.get_width(), FontStrip::strip_height,
                                                                 strip.get_coverage())});
}

const ArtworkSet::Resource& ArtworkSet::get(const std::string& name) const
{
    for (const Resource& r : _resources)
    {
        if (r.name == name)
        {
            return r;
        }
    }
    throw std::runtime_error("artgen::ArtworkSet::get() : No resource " + name + ".");
}

}  // namespace artgen
