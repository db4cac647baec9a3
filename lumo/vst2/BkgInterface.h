#pragma once

namespace lumo
{

// A job run now and then off the audio and GUI threads.
class BkgInterface
{
public:
    virtual ~BkgInterface() = default;
    // One round of work; must return quickly.
    virtual void process() = 0;
    virtual void* get_context() const = 0;
    virtual void set_context(void* context) = 0;
};

}  // namespace lumo
