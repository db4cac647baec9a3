#pragma once

#include "basic/ConfKeyStreamInterface.h"

#include <memory>
#include <string>

namespace basic
{

// A named node of the configuration tree: a section (ConfKeyMulti) or a leaf
// (ConfKeyData). Names may not hold "/" or a backslash, which separate the
// names of a key path; the empty name is allowed in memory but cannot be written.
class ConfKeyInterface : public ConfKeyStreamInterface
{
public:
    explicit ConfKeyInterface(const std::string& name);
    ~ConfKeyInterface() override = default;

    // Refuses anonymous keys, then writes the key at the given level.
    int do_write_to_string(std::string& text, int& level) const final;
    // A new deep copy of the same kind, owned by the caller.
    virtual std::unique_ptr<ConfKeyInterface> clone() const = 0;

    const std::string& get_name() const { return _name; }
    // Throws (and keeps the old name) when the name is not valid.
    void set_name(const std::string& name);
    const std::string& get_comment() const { return _comment; }
    // Line feeds become spaces: a comment always stays on one line.
    void set_comment(const std::string& comment);

    // Throws std::runtime_error when name holds "/" or a backslash.
    static void check_name_throw(const std::string& name);
    // Every byte that is not an ASCII letter or digit becomes "_".
    static std::string make_valid_name(const std::string& str);

protected:
    ConfKeyInterface(const ConfKeyInterface&) = default;
    ConfKeyInterface& operator=(const ConfKeyInterface&) = default;

    virtual int do_write_key(std::string& text, int& level) const = 0;

private:
    std::string _name;
    std::string _comment;
};

}  // namespace basic
