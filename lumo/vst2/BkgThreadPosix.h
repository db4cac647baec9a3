#pragma once

#include "lumo/vst2/BkgThreadHandlerInterface.h"

#include <atomic>
#include <thread>

namespace lumo
{

// The background thread of native builds (tests and Linux hosts).
class BkgThreadPosix : public BkgThreadHandlerInterface
{
public:
    ~BkgThreadPosix() override;

    void set_handler(BkgInterface* handler) override { _handler.store(handler, std::memory_order_release); }
    int start() override;
    void stop() override;

private:
    void run();

    std::atomic<BkgInterface*> _handler{nullptr};
    std::thread _thread;
    std::atomic<bool> _running{false};
};

}  // namespace lumo
