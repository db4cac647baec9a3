#pragma once

namespace vsthost
{

class AudioValidator;
class HostedPlugin;
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

private:
    // Opens, idles for a while with messages pumped, closes; "" or the fault.
    const char* open_and_close();

    HostedPlugin& _plugin;
    AudioValidator& _audio;
    ValidationReport& _report;
};

}  // namespace vsthost
