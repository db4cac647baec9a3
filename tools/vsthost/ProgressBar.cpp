#include "ProgressBar.h"

#include <algorithm>
#include <string>

namespace vsthost
{

namespace
{

constexpr int bar_width = 40;

}  // namespace

void ProgressBar::update(double fraction)
{
    const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100.0);
    if (!_enabled || percent == _shown)
    {
        return;
    }
    _shown = percent;
    const int filled = percent * bar_width / 100;
    _out << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
         << std::string(static_cast<std::size_t>(bar_width - filled), '-') << "] " << percent << "%" << std::flush;
}

void ProgressBar::finish()
{
    if (_enabled && _shown >= 0)
    {
        _out << "\r" << std::string(bar_width + 8, ' ') << "\r" << std::flush;
    }
}

}  // namespace vsthost
