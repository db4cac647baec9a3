#pragma once

#include <vector>

namespace sys
{

// The handles opened on the way down a key path, closed last first when the
// chain goes. Close is a function object that closes one handle.
template <class Handle, class Close>
class PersistentKeyListHandles
{
public:
    PersistentKeyListHandles() = default;
    ~PersistentKeyListHandles()
    {
        for (auto it = _handles.rbegin(); it != _handles.rend(); ++it)
        {
            Close()(*it);
        }
    }
    PersistentKeyListHandles(const PersistentKeyListHandles&) = delete;
    PersistentKeyListHandles& operator=(const PersistentKeyListHandles&) = delete;

    // Called before opening the next handle, so that adding it cannot fail
    // (and leak it).
    void make_room() { _handles.reserve(_handles.size() + 1); }
    void add(Handle handle) { _handles.push_back(handle); }
    Handle use_last() const { return _handles.back(); }

private:
    std::vector<Handle> _handles;
};

}  // namespace sys
