#include "ImageDiff.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace vsthost
{

namespace
{

bool differs(const std::uint8_t* a, const std::uint8_t* b, int tolerance)
{
    for (int c = 0; c < 3; ++c)
    {
        if (std::abs(a[c] - b[c]) > tolerance)
        {
            return true;
        }
    }
    return false;
}

// Grows box to hold other; an empty box (width 0) takes other as it is.
void merge(ImageDiff::Box& box, const ImageDiff::Box& other)
{
    if (box.width == 0)
    {
        box = other;
        return;
    }
    const int right = std::max(box.x + box.width, other.x + other.width);
    const int bottom = std::max(box.y + box.height, other.y + other.height);
    box.x = std::min(box.x, other.x);
    box.y = std::min(box.y, other.y);
    box.width = right - box.x;
    box.height = bottom - box.y;
}

std::string size_text(const Image& image)
{
    return std::to_string(image.width) + "x" + std::to_string(image.height);
}

}  // namespace

ImageDiff::ImageDiff(const Image& a, const Image& b, int tolerance)
{
    if (a.width != b.width || a.height != b.height)
    {
        throw std::invalid_argument("the pictures differ in size: " + size_text(a) + " and " + size_text(b));
    }
    // The changes of every cell of a coarse grid, as the box of its changed
    // pixels; neighbouring cells with changes are then joined.
    const int columns = (a.width + cell - 1) / cell;
    const int rows = (a.height + cell - 1) / cell;
    std::vector<Box> cells(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    for (int y = 0; y < a.height; ++y)
    {
        for (int x = 0; x < a.width; ++x)
        {
            if (differs(a.use_pixel(x, y), b.use_pixel(x, y), tolerance))
            {
                ++_changed;
                merge(cells[static_cast<std::size_t>(y / cell * columns + x / cell)], Box{x, y, 1, 1});
            }
        }
    }
    collect_boxes(cells, columns, rows);
}

void ImageDiff::collect_boxes(const std::vector<Box>& cells, int columns, int rows)
{
    std::vector<bool> seen(cells.size(), false);
    std::vector<int> pending;
    for (std::size_t start = 0; start < cells.size(); ++start)
    {
        if (seen[start] || cells[start].width == 0)
        {
            continue;
        }
        Box box;
        pending.assign(1, static_cast<int>(start));
        seen[start] = true;
        while (!pending.empty())
        {
            const int at = pending.back();
            pending.pop_back();
            merge(box, cells[static_cast<std::size_t>(at)]);
            const int cx = at % columns;
            const int cy = at / columns;
            for (int ny = std::max(cy - 1, 0); ny <= std::min(cy + 1, rows - 1); ++ny)
            {
                for (int nx = std::max(cx - 1, 0); nx <= std::min(cx + 1, columns - 1); ++nx)
                {
                    const auto n = static_cast<std::size_t>(ny * columns + nx);
                    if (!seen[n] && cells[n].width != 0)
                    {
                        seen[n] = true;
                        pending.push_back(static_cast<int>(n));
                    }
                }
            }
        }
        _boxes.push_back(box);
    }
}

void ImageDiff::print(std::ostream& out) const
{
    if (_changed == 0)
    {
        out << "no pixels changed\n";
        return;
    }
    out << "changed pixels: " << _changed << "\n";
    for (const Box& b : _boxes)
    {
        out << "changed box: x " << b.x << " y " << b.y << " w " << b.width << " h " << b.height << "\n";
    }
}

}  // namespace vsthost
