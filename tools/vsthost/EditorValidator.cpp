#include "EditorValidator.h"

#include "AudioValidator.h"
#include "EditorLeakCheck.h"
#include "EditorParent.h"
#include "HostedPlugin.h"
#include "PluginLibrary.h"
#include "ValidationReport.h"

#include <atomic>
#include <stdexcept>
#include <chrono>
#include <string>
#include <thread>

namespace vsthost
{

namespace
{

constexpr int idle_rounds = 20;
constexpr auto idle_pause = std::chrono::milliseconds(10);

}  // namespace

const char* EditorValidator::open_and_close()
{
    EditorParent parent;
    if (!parent.is_open())
    {
        return "no parent window could be made";
    }
    lumo::vst2::ERect rect{};
    if (_plugin.get_editor_rect(rect) && rect.right > rect.left && rect.bottom > rect.top)
    {
        parent.set_size(rect.right - rect.left, rect.bottom - rect.top);
    }
    if (!_plugin.open_editor(parent.use_handle()))
    {
        return "the editor did not open";
    }
    for (int i = 0; i < idle_rounds; ++i)
    {
        _plugin.dispatch(lumo::vst2::PluginOp::edit_idle);
        parent.pump();
        std::this_thread::sleep_for(idle_pause);
    }
    _plugin.close_editor();
    parent.pump();
    return "";
}

void EditorValidator::check_editor()
{
    const char* const check = "editor open and close";
    if (!_plugin.has_editor())
    {
        _report.skip(check, "the plug-in has no editor");
        return;
    }
    if (!EditorParent().is_open())
    {
        _report.skip(check, "no parent window here: the Linux build links no window system, and Windows needs a display");
        return;
    }
    _audio.prepare(_plugin.get_sample_rate(), 512);
    std::atomic<bool> stop{false};
    std::string audio_fault;
    std::thread audio([&] {
        while (!stop && audio_fault.empty())
        {
            audio_fault = _audio.process_noise(512, 1);
        }
    });
    const std::string while_processing = open_and_close();
    stop = true;
    audio.join();
    _report.expect(while_processing.empty() && audio_fault.empty(), std::string(check) + " while processing",
                   while_processing.empty() ? (audio_fault.empty() ? "clean output" : audio_fault) : while_processing);
    _plugin.suspend();
    const std::string suspended = open_and_close();
    _report.expect(suspended.empty(), std::string(check) + " while suspended", suspended.empty() ? "ok" : suspended);
}

void EditorValidator::check_editor_leaks(const PluginLibrary& library, int cycles)
{
    const char* const check = "editor leaks over repeated opening, two instances at once";
    if (!_plugin.has_editor() || !EditorParent().is_open())
    {
        _report.skip(check, "no editor, or no parent window here");
        return;
    }
    try
    {
        HostedPlugin second(library);
        const EditorLeakCheck::Result result =
            EditorLeakCheck::run({&_plugin, &second}, library.use_module(), cycles, 10);
        _report.expect(!result.has_leaked(), check, result.get_summary());
    }
    catch (const std::runtime_error& e)
    {
        _report.fail(check, e.what());
    }
}

}  // namespace vsthost
