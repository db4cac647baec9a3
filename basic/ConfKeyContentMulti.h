#pragma once

#include "basic/ConfKeyContentInterface.h"
#include "basic/ConfKeyContentString.h"

#include <deque>
#include <memory>
#include <string>

namespace basic
{

// A list value: strings and nested lists, in order.
//
// A settings file may hold lists of millions of words, so strings are kept in
// place in the list rather than each in a node of its own; nested lists (and
// elements handed in as nodes) stay nodes. The elements live in a deque: a
// growing list never moves the ones it holds, so a long list is written into
// memory once instead of being copied at each growth.
class ConfKeyContentMulti : public ConfKeyContentInterface
{
public:
    // Lists of this many elements or more are written one element per line.
    static constexpr int long_list_size = 8;

    int do_write_to_string(std::string& text, int& level) const override;
    std::unique_ptr<ConfKeyContentInterface> clone() const override;

    int get_nbr_elt() const { return static_cast<int>(_elts.size()); }
    // index must be below get_nbr_elt().
    ConfKeyContentInterface& use_elt(int index) { return _elts[static_cast<std::size_t>(index)].use(); }
    const ConfKeyContentInterface& use_elt(int index) const { return _elts[static_cast<std::size_t>(index)].use(); }
    // Appends a copy; the caller keeps its element, which may be this very list
    // or one of its elements.
    void add_elt(const ConfKeyContentInterface& elt);
    // Appends the element itself (not null), without copying it.
    void add_elt(std::unique_ptr<ConfKeyContentInterface> elt);
    // Appends a string element.
    void add_string(std::string value) { _elts.emplace_back(std::move(value)); }
    void clear() { _elts.clear(); }

private:
    // One element: the node when there is one, the string otherwise.
    class Elt
    {
    public:
        explicit Elt(std::string value) : _string(std::move(value)) {}
        explicit Elt(std::unique_ptr<ConfKeyContentInterface> node) : _node(std::move(node)) {}
        Elt(const Elt& other);
        Elt(Elt&&) noexcept = default;
        Elt& operator=(const Elt& other);
        Elt& operator=(Elt&&) noexcept = default;
        ~Elt() = default;

        ConfKeyContentInterface& use()
        {
            return _node != nullptr ? *_node : static_cast<ConfKeyContentInterface&>(_string);
        }
        const ConfKeyContentInterface& use() const
        {
            return _node != nullptr ? *_node : static_cast<const ConfKeyContentInterface&>(_string);
        }

    private:
        ConfKeyContentString _string;
        std::unique_ptr<ConfKeyContentInterface> _node;
    };

    int write_short(std::string& text, int& level) const;
    int write_long(std::string& text, int& level) const;

    std::deque<Elt> _elts;
};

}  // namespace basic
