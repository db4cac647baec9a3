#pragma once

namespace lumo
{

class DspInterface;

// What a plug-in gives the LV2 entry to build itself and to describe itself
// in its bundle.
struct Lv2PluginRecipe
{
    // The plug-in's URI; its state keys hang below it.
    const char* uri;
    // Below the bundle's folder: where the plug-in keeps files of its own.
    const char* store_path;
    DspInterface* (*create_dsp)();
    // The LV2 class after lv2:Plugin in the description, as a CURIE of the
    // core ("lv2:DelayPlugin"), or null.
    const char* plugin_class;
    // One sentence for a host's plug-in browser, or null.
    const char* comment;
};

}  // namespace lumo
