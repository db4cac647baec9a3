#pragma once

namespace lumo
{

// What the audio side asks of the host's transport. The caller sets want_tempo;
// the host service fills tempo (only on success), sets failed when the host
// gave nothing, and clears want_tempo when the answer carries no valid tempo.
struct TimeInfoRequest
{
    double tempo = 0.0;
    bool failed = false;
    bool want_tempo = false;
};

}  // namespace lumo
