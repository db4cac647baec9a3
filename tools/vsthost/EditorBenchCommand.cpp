#include "EditorBenchCommand.h"

#include "BenchStatistics.h"
#include "CommandLine.h"
#include "EditorSession.h"
#include "LivePlugin.h"

#include <iomanip>
#include <stdexcept>

namespace vsthost
{

namespace
{

const char* const usage = "usage: vsthost editor-bench PLUGIN [--seconds S] [--frames N]";

}  // namespace

int EditorBenchCommand::run(const std::vector<std::string>& words, std::ostream& out)
{
    const CommandLine args(words, {"--seconds", "--frames"}, {});
    if (args.get_positionals().size() != 1)
    {
        throw std::invalid_argument(usage);
    }
    const double seconds = args.get_number("--seconds", 10.0, 0.1, 3600.0);
    const int frames = static_cast<int>(args.get_number("--frames", 300, 1, 100000));
    LivePlugin live(args.get_positionals()[0]);
    live.use_audio().start();
    EditorSession session(live.use_plugin());
    // The window first, then the host's loop in it without the editor.
    session.open();
    const double host_only = session.measure_host_loop(static_cast<int>(seconds * 1000.0));
    session.open();
    // Past the first frames and whatever the first open fills in.
    session.run_for(500);
    session.restart_load();
    session.run_for(static_cast<int>(seconds * 1000.0));
    out << "editor " << session.get_width() << "x" << session.get_height() << " idle, "
        << EditorSession::idle_calls_per_second << " idle calls a second:\n";
    session.print_load(out);
    out << std::fixed << std::setprecision(3) << "the host's loop alone, editor closed: " << host_only
        << " % of one core\n";
    std::vector<double> times;
    for (int i = 0; i < frames; ++i)
    {
        times.push_back(session.time_full_repaint() * 1e6);
    }
    const BenchStatistics::Spread spread = BenchStatistics::get_spread(times);
    out << std::fixed << std::setprecision(1) << "full frame " << session.get_width() << "x" << session.get_height()
        << ", " << frames << " frames: min " << spread.min << " us, median " << spread.median << " us, 99th percentile "
        << BenchStatistics::get_percentile(times, 99.0) << " us, max " << spread.max << " us\n";
    session.close();
    live.use_audio().stop();
    return 0;
}

}  // namespace vsthost
