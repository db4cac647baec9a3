#pragma once

#include "lumo/vst2/BkgThreadHandlerInterface.h"

#include <atomic>

namespace lumo
{

class BkgThreadWin32 : public BkgThreadHandlerInterface
{
public:
    ~BkgThreadWin32() override;

    void set_handler(BkgInterface* handler) override { _handler.store(handler, std::memory_order_release); }
    int start() override;
    void stop() override;

private:
    static unsigned long __stdcall thread_routine(void* self);
    void run();

    std::atomic<BkgInterface*> _handler{nullptr};
    void* _thread = nullptr;
    // Cleared by stop; the thread sets it back when it leaves, as the
    // acknowledgement stop waits for.
    std::atomic<bool> _running{false};
};

}  // namespace lumo
