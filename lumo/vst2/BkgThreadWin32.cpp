#include "lumo/vst2/BkgThreadWin32.h"

#include "lumo/vst2/BkgInterface.h"

#include <windows.h>

namespace lumo
{
namespace
{

constexpr DWORD period_ms = 50;
constexpr int stop_polls = 80;  // 4 s

}  // namespace

std::unique_ptr<BkgThreadHandlerInterface> create_bkg_thread()
{
    return std::make_unique<BkgThreadWin32>();
}

BkgThreadWin32::~BkgThreadWin32()
{
    stop();
}

int BkgThreadWin32::start()
{
    if (_thread != nullptr)
    {
        return 0;
    }
    _running.store(true, std::memory_order_release);
    HANDLE h = ::CreateThread(nullptr, 0, &BkgThreadWin32::thread_routine, this, 0, nullptr);
    if (h == nullptr)
    {
        _running.store(false, std::memory_order_release);
        return -1;
    }
    _thread = h;
    return 0;
}

void BkgThreadWin32::stop()
{
    if (_thread == nullptr)
    {
        return;
    }
    _running.store(false, std::memory_order_release);
    for (int i = 0; i < stop_polls && !_running.load(std::memory_order_acquire); ++i)
    {
        ::Sleep(period_ms);
    }
    ::CloseHandle(static_cast<HANDLE>(_thread));
    _thread = nullptr;
}

unsigned long __stdcall BkgThreadWin32::thread_routine(void* self)
{
    static_cast<BkgThreadWin32*>(self)->run();
    return 0;
}

void BkgThreadWin32::run()
{
    ::SetThreadPriority(::GetCurrentThread(), THREAD_PRIORITY_LOWEST);
    while (_running.load(std::memory_order_acquire))
    {
        if (BkgInterface* h = _handler.load(std::memory_order_acquire))
        {
            h->process();
        }
        if (_running.load(std::memory_order_acquire))
        {
            ::Sleep(period_ms);
        }
    }
    _running.store(true, std::memory_order_release);
}

}  // namespace lumo
