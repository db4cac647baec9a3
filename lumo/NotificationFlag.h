#pragma once

#include "lumo/NotifiedInterface.h"

#include <atomic>

namespace lumo
{

// Latches that a parameter changed. Writers store the parameter's values first
// and then notify (release); the audio thread tests the flag (acquire) and only
// then reads the values, so it never sees a flag without the values behind it.
// Any number of notifications before the audio thread looks give one re-read.
class NotificationFlag : public NotifiedInterface
{
public:
    explicit NotificationFlag(bool initial = false);

    void notify(NotifierInterface& notifier) override;

    bool test() const;
    void clear();
    // Tests and clears in one step: true when at least one change arrived since
    // the last call. A change that lands while the caller reads the values sets
    // the flag again, so it is never lost.
    bool test_and_clear();

protected:
    virtual void on_cleared() {}
    virtual void on_set() {}

private:
    std::atomic<bool> _flag;
};

}  // namespace lumo
