#include "lumo/vst2/BkgThreadPosix.h"

#include "lumo/vst2/BkgInterface.h"

#include <chrono>
#include <system_error>

namespace lumo
{
namespace
{

constexpr std::chrono::milliseconds period{50};
constexpr int stop_polls = 80;  // 4 s

}  // namespace

std::unique_ptr<BkgThreadHandlerInterface> create_bkg_thread()
{
    return std::make_unique<BkgThreadPosix>();
}

BkgThreadPosix::~BkgThreadPosix()
{
    stop();
}

int BkgThreadPosix::start()
{
    if (_thread.joinable())
    {
        return 0;
    }
    _running.store(true, std::memory_order_release);
    try
    {
        _thread = std::thread([this] { run(); });
    }
    catch (const std::system_error&)
    {
        _running.store(false, std::memory_order_release);
        return -1;
    }
    return 0;
}

void BkgThreadPosix::stop()
{
    if (!_thread.joinable())
    {
        return;
    }
    _running.store(false, std::memory_order_release);
    for (int i = 0; i < stop_polls && !_running.load(std::memory_order_acquire); ++i)
    {
        std::this_thread::sleep_for(period);
    }
    if (_running.load(std::memory_order_acquire))
    {
        _thread.join();
    }
    else
    {
        _thread.detach();  // a handler that hangs: give up on it, as the host would
    }
}

void BkgThreadPosix::run()
{
    while (_running.load(std::memory_order_acquire))
    {
        if (BkgInterface* h = _handler.load(std::memory_order_acquire))
        {
            h->process();
        }
        // Sleep in small steps so stop() is answered quickly.
        for (int i = 0; i < 10 && _running.load(std::memory_order_acquire); ++i)
        {
            std::this_thread::sleep_for(period / 10);
        }
    }
    _running.store(true, std::memory_order_release);
}

}  // namespace lumo
