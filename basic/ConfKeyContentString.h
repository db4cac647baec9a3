#pragma once

#include "basic/ConfKeyContentInterface.h"

#include <string>

namespace basic
{

class ConfKeyContentString : public ConfKeyContentInterface
{
public:
    ConfKeyContentString() = default;
    explicit ConfKeyContentString(std::string value);

    int do_write_to_string(std::string& text, int& level) const override;
    std::unique_ptr<ConfKeyContentInterface> clone() const override;

    const std::string& get_string() const { return _value; }
    void set_string(const std::string& value) { _value = value; }

private:
    std::string _value;
};

}  // namespace basic
