#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>

namespace vsthost
{

class HostedPlugin;
class LoopingSource;

// Plays a source through the plug-in on a thread of its own, paced like a
// sound card: one block per block's duration. The output goes nowhere; what
// counts is that the plug-in processes while its editor is open.
class AudioLoop
{
public:
    AudioLoop(HostedPlugin& plugin, LoopingSource& source, int block_size)
        : _plugin(plugin), _source(source), _block_size(block_size)
    {
    }
    AudioLoop(const AudioLoop&) = delete;
    AudioLoop& operator=(const AudioLoop&) = delete;
    ~AudioLoop() { stop(); }

    // Resumes the plug-in and starts the thread.
    void start();
    // Ends the thread and suspends the plug-in; nothing when not running.
    void stop();
    std::uint64_t get_blocks() const { return _blocks.load(std::memory_order_relaxed); }

private:
    void run();

    HostedPlugin& _plugin;
    LoopingSource& _source;
    int _block_size;
    std::thread _thread;
    std::atomic<bool> _stop{false};
    std::atomic<std::uint64_t> _blocks{0};
};

}  // namespace vsthost
