#include "basic/ConfKeyContentMulti.h"

#include <utility>

namespace basic
{

ConfKeyContentMulti::Elt::Elt(const Elt& other)
    : _string(other._string), _node(other._node != nullptr ? other._node->clone() : nullptr)
{
}

ConfKeyContentMulti::Elt& ConfKeyContentMulti::Elt::operator=(const Elt& other)
{
    Elt copy(other);
    std::swap(*this, copy);
    return *this;
}

// The copy is made before the list changes, so that an element of this very
// list (or the list itself) may be handed in.
void ConfKeyContentMulti::add_elt(const ConfKeyContentInterface& elt)
{
    const auto* str = dynamic_cast<const ConfKeyContentString*>(&elt);
    Elt copy = str != nullptr ? Elt(str->get_string()) : Elt(elt.clone());
    _elts.push_back(std::move(copy));
}

void ConfKeyContentMulti::add_elt(std::unique_ptr<ConfKeyContentInterface> elt)
{
    _elts.emplace_back(std::move(elt));
}

int ConfKeyContentMulti::do_write_to_string(std::string& text, int& level) const
{
    return get_nbr_elt() < long_list_size ? write_short(text, level) : write_long(text, level);
}

std::unique_ptr<ConfKeyContentInterface> ConfKeyContentMulti::clone() const
{
    return std::make_unique<ConfKeyContentMulti>(*this);
}

// { a b c } on the current line.
int ConfKeyContentMulti::write_short(std::string& text, int& level) const
{
    text += "{ ";
    for (int i = 0; i < get_nbr_elt(); ++i)
    {
        const int err = use_elt(i).do_write_to_string(text, level);
        if (err != 0)
        {
            return err;
        }
        text += ' ';
    }
    text += '}';
    return 0;
}

// One element per line, one level deeper, the closing brace back at this level.
int ConfKeyContentMulti::write_long(std::string& text, int& level) const
{
    text += "{\n";
    {
        const LevelRaise raise(level);
        for (int i = 0; i < get_nbr_elt(); ++i)
        {
            append_indent(text, level);
            const int err = use_elt(i).do_write_to_string(text, level);
            if (err != 0)
            {
                return err;
            }
            text += '\n';
        }
    }
    append_indent(text, level);
    text += '}';
    return 0;
}

}  // namespace basic
