#include "Transport.h"

#include <cmath>

namespace vsthost
{

lumo::vst2::TimeInfo* Transport::use_time_info()
{
    namespace flags = lumo::vst2::time_info_flags;
    const double ppq = _frame / _sample_rate * _tempo / 60.0;
    _info = lumo::vst2::TimeInfo{};
    _info.sample_pos = _frame;
    _info.sample_rate = _sample_rate;
    _info.ppq_pos = ppq;
    _info.tempo = _tempo;
    _info.bar_start_pos = 4.0 * std::floor(ppq / 4.0);
    _info.time_sig_numerator = 4;
    _info.time_sig_denominator = 4;
    // Everything but SMPTE, MIDI clock and the system time is known; plug-ins
    // may read whatever the flags say regardless of what they asked for.
    _info.flags = flags::transport_playing | flags::ppq_pos_valid | flags::tempo_valid | flags::bars_valid
                  | flags::time_sig_valid;
    return &_info;
}

}  // namespace vsthost
