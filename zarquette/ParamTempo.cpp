#include "zarquette/ParamTempo.h"

#include "lumo/TempoRecord.h"
#include "lumo/TextCopy.h"
#include "zarquette/ParamDisplay.h"

#include <algorithm>
#include <cmath>

namespace zarquette
{
namespace
{

constexpr double min_bpm = 60.0;
constexpr double max_bpm = 240.0;
// Host tempos closer than this to the parameter are taken as the same tempo, so
// tiny jitter in a host's report does not flood the editor with changes.
constexpr double adoption_threshold = static_cast<double>(0.0001f);

}  // namespace

void ParamTempo::get_name(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, "Tempo");
}

void ParamTempo::get_unit(char* text, int capacity) const
{
    lumo::copy_text(text, capacity, "BPM");
}

double ParamTempo::norm_to_nat(float norm) const
{
    return static_cast<double>(norm) * (max_bpm - min_bpm) + min_bpm;
}

double ParamTempo::nat_to_norm(double nat) const
{
    return (nat - min_bpm) * (1.0 / (max_bpm - min_bpm));
}

void ParamTempo::get_display(char* text, int capacity, double nat) const
{
    format_param_display(text, capacity, "%.3f", nat);
}

double ParamTempo::parse_display(const char* text, bool& ok) const
{
    double v = 0.0;
    if (!parse_param_number(text, v))
    {
        return 0.0;
    }
    ok = true;
    return std::clamp(v, min_bpm, max_bpm);
}

void ParamTempo::init_tempo(double nat_default, int priority, lumo::TempoRecord* source)
{
    init(nat_default, priority);
    _source = source;
}

void ParamTempo::set_use_host_tempo(bool use)
{
    _use_host_tempo.store(use, std::memory_order_relaxed);
}

void ParamTempo::set_host_tempo(float bpm)
{
    if (_source != nullptr)
    {
        _source->bpm.store(bpm, std::memory_order_relaxed);
    }
    update();
}

void ParamTempo::update()
{
    if (_source == nullptr)
    {
        return;
    }
    if (!get_use_host_tempo())
    {
        _source->bpm.store(get_nat_value(), std::memory_order_relaxed);
        return;
    }
    const double host = _source->bpm.load(std::memory_order_relaxed);
    if (std::fabs(host - get_nat_value()) <= adoption_threshold)
    {
        return;
    }
    // Adopt the host's tempo as the parameter's own value; going through the
    // normal change path lets the engines and the editor follow.
    set_nat_value(host);
}

}  // namespace zarquette
