#include "basic/ConfKeyContentMulti.h"

namespace basic
{

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
