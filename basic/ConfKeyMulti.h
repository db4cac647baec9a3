#pragma once

#include "basic/CloneList.h"
#include "basic/ConfKeyInterface.h"

#include <string>

namespace basic
{

// A section: named child keys in insertion order. Several children may share
// a name; lookups by name or path find the first one.
class ConfKeyMulti : public ConfKeyInterface
{
public:
    explicit ConfKeyMulti(const std::string& name);
    ~ConfKeyMulti() override = default;
    ConfKeyMulti(const ConfKeyMulti&) = default;
    ConfKeyMulti& operator=(const ConfKeyMulti&) = default;

    std::unique_ptr<ConfKeyInterface> clone() const override;

    int get_nbr_keys() const { return _keys.get_size(); }
    // index must be below get_nbr_keys().
    ConfKeyInterface& use_key(int index) { return _keys.use(index); }
    const ConfKeyInterface& use_key(int index) const { return _keys.use(index); }

    // Position of the first section (or leaf) child named exactly name at or
    // after start; -1 when there is none. Call again with the answer + 1 to
    // walk all children of that name.
    int find_key_multi(const std::string& name, int start = 0) const;
    int find_key_data(const std::string& name, int start = 0) const;

    // The node a path such as "midi/control_map" names, or null. Throws on a
    // path whose first component is empty.
    ConfKeyInterface* use_key_from_path(const std::string& path);
    const ConfKeyInterface* use_key_from_path(const std::string& path) const;
    // The string value of the leaf the path names; empty for anything else.
    std::string get_string(const std::string& path) const;

    // Appends a clone; never replaces.
    void add_key(const ConfKeyInterface& key);
    // Appends the key itself (not null). The reader builds trees this way:
    // cloning each finished subtree into its parent would copy deep trees
    // once per level.
    void add_key(std::unique_ptr<ConfKeyInterface> key);
    // Replaces the first child of the same name by a clone in its place, or appends.
    void set_key(const ConfKeyInterface& key);

    // Cuts path at its first "/" or backslash. Throws when the part before it
    // (or the whole path) is empty.
    static void split_key_path_first(const std::string& path, std::string& first, std::string& rest);

protected:
    int do_write_key(std::string& text, int& level) const override;

private:
    template <class Kind>
    int find_key(const std::string& name, int start) const;
    int find_key_any(const std::string& name) const;
    int write_children(std::string& text, int& level) const;

    CloneList<ConfKeyInterface> _keys;
};

}  // namespace basic
