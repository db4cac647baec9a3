#pragma once

namespace vsthost
{

class AudioValidator;
class HostedPlugin;
class PluginLibrary;
class ValidationReport;

// Opens and closes the plug-in's editor in a real parent window, once while
// another thread processes audio and once with the plug-in suspended.
class EditorValidator
{
public:
    EditorValidator(HostedPlugin& plugin, AudioValidator& audio, ValidationReport& report)
        : _plugin(plugin), _audio(audio), _report(report)
    {
    }

    void check_editor();
    // Opens and closes this instance's editor and a second instance's at
    // once, cycles times, and fails when window objects or the plug-in's
    // window class are left behind.
    void check_editor_leaks(const PluginLibrary& library, int cycles);

private:
    // Opens, idles for a while with messages pumped, closes; "" or the fault.
    const char* open_and_close();

    HostedPlugin& _plugin;
    AudioValidator& _audio;
    ValidationReport& _report;
};

}  // namespace vsthost
