#include "BenchStatistics.h"

#include <algorithm>
#include <cmath>

namespace vsthost
{

BenchStatistics::Spread BenchStatistics::get_spread(std::vector<double> values)
{
    if (values.empty())
    {
        return {};
    }
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    const double median = n % 2 != 0 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) * 0.5;
    return {values.front(), median, values.back()};
}

double BenchStatistics::get_percentile(std::vector<double> values, double p)
{
    if (values.empty())
    {
        return 0.0;
    }
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(std::clamp(p, 0.0, 100.0) / 100.0 * static_cast<double>(values.size()));
    const auto index = static_cast<std::size_t>(std::max(rank, 1.0)) - 1;
    return values[std::min(index, values.size() - 1)];
}

}  // namespace vsthost
