#pragma once

#include "gadu/MessageHandlerInterface.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

namespace zarquette
{

// Parameter changes and learn states that reach the editor from any thread
// (the host automates from its audio thread, MIDI arrives there too), held
// until the editor's own thread takes them: the controls, their drawing and
// the window are touched by that thread only. Posting neither locks nor
// allocates; a second post before the take replaces the first, since only the
// latest value counts.
class ParamInbox : public gadu::MessageHandlerInterface
{
public:
    // What the editor does with a parameter that changed, and with a learn state.
    using ApplyParam = std::function<void(int index, std::int32_t level)>;
    using ApplyLearn = std::function<void(int index, std::int32_t state)>;

    // Before any post: the editor's thread, while nothing posts.
    void set_up(int nbr_params, ApplyParam apply_param, ApplyLearn apply_learn);
    int get_nbr_params() const { return _nbr_params; }

    // Any thread. Indexes outside the parameters are dropped.
    void post_param(int index, std::int32_t level);
    void post_learn(int index, std::int32_t state);

    // The editor's thread: applies what was posted since the last take.
    void take();
    // The window's timer calls take.
    std::int32_t handle_message(const gadu::MessageInterface& message) override;

private:
    struct Slot
    {
        std::atomic<std::int32_t> level{0};
        std::atomic<bool> param_dirty{false};
        std::atomic<std::int32_t> learn_state{0};
        std::atomic<bool> learn_dirty{false};
    };

    bool is_param(int index) const { return index >= 0 && index < _nbr_params; }

    std::unique_ptr<Slot[]> _slots;
    int _nbr_params = 0;
    ApplyParam _apply_param;
    ApplyLearn _apply_learn;
};

}  // namespace zarquette
