#pragma once

#include "gadu/MessageInterface.h"

namespace gadu
{

class RenderingBufferInterface;

// Groups the messages of the redraw protocol. Only Redraw carries a buffer;
// the others answer null.
class GraphicMessage
{
public:
    virtual ~GraphicMessage() = default;

    RenderingBufferInterface* use_buffer() const { return _buffer; }

protected:
    explicit GraphicMessage(RenderingBufferInterface* buffer = nullptr) : _buffer(buffer) {}
    GraphicMessage(const GraphicMessage&) = default;
    GraphicMessage& operator=(const GraphicMessage&) = default;

private:
    RenderingBufferInterface* _buffer;
};

// Opens one paint; the region is the whole dirty region.
class RedrawBegin : public MessageDown, public GraphicMessage
{
public:
    explicit RedrawBegin(const Rect& dirty) : MessageDown(dirty) {}
};

// One tile of the dirty region. The tile's top-left corner lands on the
// buffer's pixel (0, 0); the tile is never larger than the buffer.
class Redraw : public MessageDown, public GraphicMessage
{
public:
    Redraw(const Rect& tile, RenderingBufferInterface& buffer) : MessageDown(tile), GraphicMessage(&buffer) {}
};

class RedrawEnd : public MessageDown, public GraphicMessage
{
public:
    explicit RedrawEnd(const Rect& dirty) : MessageDown(dirty) {}
};

// A control asks for the region (window pixels) to be drawn again.
class Invalidate : public MessageUp, public GraphicMessage
{
public:
    explicit Invalidate(const Rect& region) : _region(region) {}
    const Rect& get_region() const { return _region; }

private:
    Rect _region;
};

}  // namespace gadu
