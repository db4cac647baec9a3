#pragma once

#include "gadu/MenuNodeInterface.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace gadu
{

class MenuActionInterface;

// A choosable entry. Its id, unique in the process, is what the platform's
// menu answers when the user picks it.
class MenuItem : public MenuNodeInterface
{
public:
    // action: not owned, may be null (an entry that only informs).
    explicit MenuItem(std::string label, MenuActionInterface* action = nullptr);

    std::uint32_t get_id() const { return _id; }
    bool is_disabled() const { return _disabled; }
    void set_disabled(bool disabled) { _disabled = disabled; }
    bool is_checked() const { return _checked; }
    void set_checked(bool checked) { _checked = checked; }
    MenuActionInterface* use_action() const { return _action; }
    void set_action(MenuActionInterface* action) { _action = action; }

    // Runs the action, if any.
    void choose();

    // Starts at 1: a platform menu answers 0 when nothing was chosen. Atomic
    // because two editors may build menus on two threads.
    class MenuIdGenerator
    {
    public:
        static std::uint32_t next() { return _last.fetch_add(1, std::memory_order_relaxed) + 1; }

    private:
        static inline std::atomic<std::uint32_t> _last{0};
    };

private:
    std::uint32_t _id;
    bool _disabled = false;
    bool _checked = false;
    MenuActionInterface* _action;
};

}  // namespace gadu
