#include "AudioLoop.h"

#include "AudioBuffers.h"
#include "HostedPlugin.h"
#include "LoopingSource.h"

#include <algorithm>
#include <chrono>

namespace vsthost
{

void AudioLoop::start()
{
    if (_thread.joinable())
    {
        return;
    }
    _plugin.resume();
    _stop = false;
    _thread = std::thread([this] { run(); });
}

void AudioLoop::stop()
{
    if (_thread.joinable())
    {
        _stop = true;
        _thread.join();
        _plugin.suspend();
    }
}

void AudioLoop::run()
{
    using clock = std::chrono::steady_clock;
    const auto frames = static_cast<std::size_t>(_block_size);
    AudioBuffers dry(_source.get_channels(), frames);
    AudioBuffers in(_plugin.get_num_inputs(), frames);
    AudioBuffers out(_plugin.get_num_outputs(), frames);
    const auto period = std::chrono::duration_cast<clock::duration>(
        std::chrono::duration<double>(static_cast<double>(frames) / _plugin.get_sample_rate()));
    auto deadline = clock::now();
    while (!_stop)
    {
        _source.read(dry, frames);
        // A mono source feeds every input; extra source channels are dropped.
        for (int c = 0; c < _plugin.get_num_inputs(); ++c)
        {
            std::copy_n(dry.use_channel(c % dry.get_channels()), frames, in.use_channel(c));
        }
        _plugin.process(in.use_pointers(), out.use_pointers(), static_cast<std::int32_t>(frames));
        _blocks.fetch_add(1, std::memory_order_relaxed);
        deadline += period;
        // After a stall (a debugger, a slow plug-in) the clock starts afresh
        // instead of racing to catch up.
        const auto now = clock::now();
        if (now - deadline > std::chrono::seconds(1))
        {
            deadline = now;
        }
        std::this_thread::sleep_until(deadline);
    }
}

}  // namespace vsthost
