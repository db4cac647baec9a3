#pragma once

#include "basic/CloneList.h"
#include "basic/ConfKeyContentInterface.h"

namespace basic
{

// A list value: strings and nested lists, in order.
class ConfKeyContentMulti : public ConfKeyContentInterface
{
public:
    // Lists of this many elements or more are written one element per line.
    static constexpr int long_list_size = 8;

    int do_write_to_string(std::string& text, int& level) const override;
    std::unique_ptr<ConfKeyContentInterface> clone() const override;

    int get_nbr_elt() const { return _elts.get_size(); }
    // index must be below get_nbr_elt().
    ConfKeyContentInterface& use_elt(int index) { return _elts.use(index); }
    const ConfKeyContentInterface& use_elt(int index) const { return _elts.use(index); }
    // Appends a clone; the caller keeps its element.
    void add_elt(const ConfKeyContentInterface& elt) { _elts.append(elt); }
    // Appends the element itself (not null), without copying it.
    void add_elt(std::unique_ptr<ConfKeyContentInterface> elt) { _elts.append(std::move(elt)); }
    void clear() { _elts.clear(); }

private:
    int write_short(std::string& text, int& level) const;
    int write_long(std::string& text, int& level) const;

    CloneList<ConfKeyContentInterface> _elts;
};

}  // namespace basic
