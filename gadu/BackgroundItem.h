#pragma once

#include "gadu/BackgroundNodeInterface.h"
#include "gadu/Picture.h"

namespace gadu
{

// One picture copied under everything else, its hot spot at the node's
// position. It only draws; every other message passes it by.
class BackgroundItem : public BackgroundNodeInterface
{
public:
    void set_picture(const Picture& picture) { _picture = picture; }
    const Picture& use_picture() const { return _picture; }

    std::int32_t dispatch_down(const MessageInterface& message) override;

private:
    Picture _picture;
};

}  // namespace gadu
