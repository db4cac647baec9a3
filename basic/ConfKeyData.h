#pragma once

#include "basic/ConfKeyContentInterface.h"
#include "basic/ConfKeyInterface.h"

#include <memory>
#include <string>

namespace basic
{

// A leaf key: a name and one value, a string or a list. The value is never null.
class ConfKeyData : public ConfKeyInterface
{
public:
    // The value is the empty string.
    explicit ConfKeyData(const std::string& name);
    ConfKeyData(const std::string& name, const std::string& value);
    ConfKeyData(const ConfKeyData& other);
    ConfKeyData& operator=(const ConfKeyData& other);
    ~ConfKeyData() override = default;

    std::unique_ptr<ConfKeyInterface> clone() const override;

    ConfKeyContentInterface& use_content() { return *_content; }
    const ConfKeyContentInterface& use_content() const { return *_content; }
    // Stores a clone; the caller keeps its content.
    void set_content(const ConfKeyContentInterface& content);
    // Takes the content itself (not null), without copying it.
    void set_content(std::unique_ptr<ConfKeyContentInterface> content);

protected:
    int do_write_key(std::string& text, int& level) const override;

private:
    std::unique_ptr<ConfKeyContentInterface> _content;
};

}  // namespace basic
