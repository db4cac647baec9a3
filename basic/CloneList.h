#pragma once

#include <memory>
#include <vector>

namespace basic
{

// An ordered list of owned polymorphic objects with value semantics: copying
// the list clones every element, so two copies never share a node. T offers
// clone() returning std::unique_ptr<T>.
template <class T>
class CloneList
{
public:
    CloneList() = default;
    CloneList(const CloneList& other)
    {
        _items.reserve(other._items.size());
        for (const auto& item : other._items)
        {
            _items.push_back(item->clone());
        }
    }
    CloneList(CloneList&&) noexcept = default;
    CloneList& operator=(const CloneList& other)
    {
        CloneList copy(other);
        _items.swap(copy._items);
        return *this;
    }
    CloneList& operator=(CloneList&&) noexcept = default;
    ~CloneList() = default;

    int get_size() const { return static_cast<int>(_items.size()); }
    T& use(int index) { return *_items[static_cast<std::size_t>(index)]; }
    const T& use(int index) const { return *_items[static_cast<std::size_t>(index)]; }

    // The clone is made before the list changes, so an element of this very
    // list may be handed in.
    void append(const T& item) { _items.push_back(item.clone()); }
    // Takes a node nobody else holds, without copying it; item is not null.
    void append(std::unique_ptr<T> item) { _items.push_back(std::move(item)); }
    void replace(int index, const T& item) { _items[static_cast<std::size_t>(index)] = item.clone(); }
    void clear() { _items.clear(); }

private:
    std::vector<std::unique_ptr<T>> _items;
};

}  // namespace basic
