#pragma once

namespace lumo
{

class DspInterface;
class GuiInterface;

// What a plug-in gives the LV2 editor entry to build its editor apart from
// the audio side (an LV2 UI, in a binary of its own).
struct Lv2UiRecipe
{
    // The editor's URI, and the URI of the plug-in whose ports it speaks.
    const char* uri;
    const char* plugin_uri;
    // The audio side as the editor sees it (a DspMirror of the effect), not
    // yet initialised.
    DspInterface* (*create_dsp)();
    GuiInterface* (*create_gui)();
};

}  // namespace lumo
