#pragma once

#include <memory>

namespace lumo
{

class BkgInterface;

// A thread that runs one handler's process every 50 ms at the lowest priority.
class BkgThreadHandlerInterface
{
public:
    virtual ~BkgThreadHandlerInterface() = default;
    virtual void set_handler(BkgInterface* handler) = 0;
    // 0 when the thread runs (or already ran), -1 when it could not be started.
    virtual int start() = 0;
    // Asks the thread to end and waits for its acknowledgement, 4 s at most.
    virtual void stop() = 0;
};

// The platform's implementation.
std::unique_ptr<BkgThreadHandlerInterface> create_bkg_thread();

}  // namespace lumo
