#pragma once

#include <string>

namespace lumo
{

// How much larger the user wants the editor on a dense screen: the per-user
// value "Editor Zoom" below the plug-in's own key, "1", "2" or "3". Host
// adapters read it each time the editor opens, so a change shows at the next
// open without reloading the plug-in.
class EditorZoom
{
public:
    static constexpr const char* value_name = "Editor Zoom";
    static constexpr int normal = 1;
    static constexpr int largest = 3;

    // The zoom of the plug-in named plugin_name (its "plugin_name" setting).
    // A missing value is written as "1" so that the user finds the setting to
    // edit; anything else that is not 1, 2 or 3 gives 1 and stays as the user
    // wrote it. A store that cannot be opened gives 1.
    static int read(const std::string& plugin_name);
};

}  // namespace lumo
