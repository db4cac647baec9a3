#pragma once

#include <vector>

namespace vsthost
{

// Summaries of timing samples for the bench command.
class BenchStatistics
{
public:
    struct Spread
    {
        double min = 0.0;
        double median = 0.0;
        double max = 0.0;
    };

    // Smallest, middle (mean of the two middle values for an even count) and
    // largest; all zero for no values.
    static Spread get_spread(std::vector<double> values);
    // The nearest-rank percentile p in (0, 100]: the smallest value with at
    // least p % of the values at or below it; zero for no values.
    static double get_percentile(std::vector<double> values, double p);
};

}  // namespace vsthost
