#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace vsthost
{

// Parameter values over time as comma-separated text: a header row with
// "frame" and the parameter names, then one row per block with the block's
// first frame and every parameter's normalized value after the block.
class AutomationCsv
{
public:
    AutomationCsv(std::ostream& out, const std::vector<std::string>& names);

    void add_row(std::uint64_t frame, const std::vector<float>& values);

    // A field as CSV needs it: quoted, with quotes doubled, when it holds a
    // comma, a quote or a line break.
    static std::string quote(const std::string& field);

private:
    std::ostream& _out;
};

}  // namespace vsthost
