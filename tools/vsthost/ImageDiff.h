#pragma once

#include "Image.h"

#include <ostream>
#include <vector>

namespace vsthost
{

// Where two pictures of the same size differ: the count of changed pixels and
// the bounding boxes of the changed areas, so a test can say "the pixels
// around this control changed and nothing else did".
class ImageDiff
{
public:
    struct Box
    {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
    };

    // A pixel has changed when one of its colour channels differs by more
    // than tolerance. Throws std::invalid_argument when the sizes differ.
    ImageDiff(const Image& a, const Image& b, int tolerance);

    long get_changed() const { return _changed; }
    // One box per group of changes; changes less than a cell apart share one.
    const std::vector<Box>& get_boxes() const { return _boxes; }
    void print(std::ostream& out) const;

    // Changes closer than this many pixels count as one area.
    static constexpr int cell = 8;

private:
    void collect_boxes(const std::vector<Box>& cells, int columns, int rows);

    long _changed = 0;
    std::vector<Box> _boxes;
};

}  // namespace vsthost
