#include "AudioValidator.h"

#include "AllocationCounter.h"
#include "HostedPlugin.h"
#include "ParamState.h"
#include "ValidationReport.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <sstream>
#include <thread>

namespace vsthost
{

namespace
{

constexpr int blocks_per_setting = 10;
constexpr int automation_block = 32;
constexpr int max_automated_params = 10;
constexpr int thread_blocks = 500;

std::size_t largest_block(const ValidationOptions& options)
{
    const int largest = *std::max_element(options.blocks.begin(), options.blocks.end());
    // Room for blocks twice the announced size.
    return static_cast<std::size_t>(std::max(largest, 512)) * 2;
}

std::string describe_setting(double rate, int block)
{
    std::ostringstream s;
    s << rate << " Hz, block " << block;
    return s.str();
}

}  // namespace

AudioValidator::AudioValidator(HostedPlugin& plugin, const ValidationOptions& options, ValidationReport& report,
                               std::mt19937& rng)
    : _plugin(plugin),
      _options(options),
      _report(report),
      _rng(rng),
      _in(plugin.get_num_inputs(), largest_block(options)),
      _out(plugin.get_num_outputs(), largest_block(options))
{
}

void AudioValidator::prepare(double rate, int block)
{
    _plugin.suspend();
    _plugin.set_sample_rate(rate);
    _plugin.set_block_size(block);
    _plugin.resume();
}

void AudioValidator::fill_noise(int frames)
{
    std::uniform_real_distribution<float> noise(-0.5f, 0.5f);
    for (int c = 0; c < _plugin.get_num_inputs(); ++c)
    {
        std::generate_n(_in.use_channel(c), frames, [&] { return noise(_rng); });
    }
}

std::string AudioValidator::scan_output(int frames)
{
    for (int c = 0; c < _plugin.get_num_outputs(); ++c)
    {
        const float* out = _out.use_channel(c);
        for (int i = 0; i < frames; ++i)
        {
            const int kind = std::fpclassify(out[i]);
            if (kind == FP_NAN || kind == FP_INFINITE || kind == FP_SUBNORMAL)
            {
                std::ostringstream s;
                s << (kind == FP_NAN ? "NaN" : (kind == FP_INFINITE ? "infinity" : "subnormal")) << " ("
                  << out[i] << ") in output " << c << " at frame " << i;
                return s.str();
            }
        }
    }
    return {};
}

std::string AudioValidator::process_noise(int frames, int count)
{
    for (int b = 0; b < count; ++b)
    {
        fill_noise(frames);
        _plugin.process(_in.use_pointers(), _out.use_pointers(), frames);
        const std::string fault = scan_output(frames);
        if (!fault.empty())
        {
            return fault + " of block " + std::to_string(b);
        }
    }
    return {};
}

void AudioValidator::check_rates_and_blocks()
{
    for (const double rate : _options.rates)
    {
        std::string fault;
        for (const int block : _options.blocks)
        {
            prepare(rate, block);
            fault = process_noise(block, blocks_per_setting);
            if (!fault.empty())
            {
                fault = describe_setting(rate, block) + ": " + fault;
                break;
            }
        }
        std::ostringstream check;
        check << "audio at " << rate << " Hz";
        _report.expect(fault.empty(), check.str(), fault.empty() ? "every block size, clean output" : fault);
    }
}

void AudioValidator::check_changes_while_resumed()
{
    prepare(_options.rates.front(), _options.blocks.front());
    // Hosts are not supposed to do this, but some do: the plug-in must survive it.
    for (const double rate : _options.rates)
    {
        for (const int block : _options.blocks)
        {
            _plugin.set_sample_rate(rate);
            _plugin.set_block_size(block);
            const std::string fault = process_noise(block, blocks_per_setting);
            if (!fault.empty())
            {
                _report.fail("rate and block changes while resumed", describe_setting(rate, block) + ": " + fault);
                return;
            }
        }
    }
    _report.pass("rate and block changes while resumed", "clean output");
}

void AudioValidator::check_oversized_blocks()
{
    for (const int block : _options.blocks)
    {
        prepare(_options.rates.front(), block);
        const std::string fault = process_noise(block * 2, blocks_per_setting);
        if (!fault.empty())
        {
            _report.fail("blocks larger than announced", "announced " + std::to_string(block) + ": " + fault);
            return;
        }
    }
    _report.pass("blocks larger than announced", "twice each announced size, clean output");
}

void AudioValidator::check_automation()
{
    const double rate = _options.rates.front();
    prepare(rate, automation_block);
    const int seconds = _options.scaled(1);
    const int blocks = static_cast<int>(rate * seconds / automation_block);
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    const int params = _plugin.get_num_params();
    std::uniform_int_distribution<int> how_many(0, std::min(params, max_automated_params));
    std::uniform_int_distribution<int> which(0, std::max(params - 1, 0));
    for (int b = 0; b < blocks; ++b)
    {
        for (int n = params > 0 ? how_many(_rng) : 0; n > 0; --n)
        {
            _plugin.set_param(which(_rng), value(_rng));
        }
        const std::string fault = process_noise(automation_block, 1);
        if (!fault.empty())
        {
            _report.fail("automation between 32-frame blocks", "block " + std::to_string(b) + ": " + fault);
            return;
        }
    }
    _report.pass("automation between 32-frame blocks",
                 std::to_string(seconds) + " s with up to 10 parameters changed per block, clean output");
}

void AudioValidator::check_threads()
{
    prepare(_options.rates.front(), automation_block);
    std::atomic<bool> done{false};
    std::string fault;
    const int rounds = _options.scaled(100);
    const bool chunks = _plugin.has_flag(lumo::vst2::effect_flags::program_chunks);
    std::thread audio([&] {
        fault = process_noise(automation_block, thread_blocks);
        done = true;
    });
    std::thread params([&] {
        std::mt19937 rng(_options.seed + 1);
        std::uniform_real_distribution<float> value(0.0f, 1.0f);
        for (int r = 0; r < rounds || !done; ++r)
        {
            for (int i = 0; i < _plugin.get_num_params(); ++i)
            {
                _plugin.set_param(i, value(rng));
                static_cast<void>(_plugin.get_param(i));
            }
        }
    });
    std::thread state([&] {
        for (int r = 0; chunks && (r < rounds / 10 || !done); ++r)
        {
            const bool preset = r % 2 == 1;
            _plugin.set_chunk(_plugin.get_chunk(preset), preset);
        }
    });
    audio.join();
    params.join();
    state.join();
    _report.expect(fault.empty(), "parameters and chunks from other threads while processing",
                   fault.empty() ? std::to_string(thread_blocks) + " blocks of 32 frames, " + std::to_string(rounds)
                                       + "+ rounds over every parameter"
                                       + (chunks ? ", chunks got and set" : ", no chunks to exchange")
                                 : fault);
}

void AudioValidator::check_allocations()
{
    if (!AllocationCounter::is_supported())
    {
        _report.skip("allocations while processing",
                     "a Windows plug-in allocates through its own runtime, which this host cannot count");
        return;
    }
    prepare(_options.rates.front(), 512);
    process_noise(512, blocks_per_setting);  // first blocks may set up lazily
    const int blocks = _options.scaled(50);
    long calls = 0;
    std::uniform_real_distribution<float> value(0.0f, 1.0f);
    for (int b = 0; b < blocks; ++b)
    {
        if (_plugin.get_num_params() > 0)
        {
            _plugin.set_param(b % _plugin.get_num_params(), value(_rng));
        }
        fill_noise(512);
        AllocationCounter::open();
        _plugin.process(_in.use_pointers(), _out.use_pointers(), 512);
        calls += AllocationCounter::close();
    }
    _report.expect(calls == 0, "allocations while processing",
                   std::to_string(calls) + " calls of operator new in " + std::to_string(blocks) + " blocks");
}

}  // namespace vsthost
