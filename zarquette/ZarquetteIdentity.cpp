#include "zarquette/ZarquetteIdentity.h"

#include "lumo/PluginInternal.h"
#include "zarquette/ParamBof.h"
#include "zarquette/ParamGauloises.h"
#include "zarquette/ParamNuke.h"
#include "zarquette/ParamOignons.h"
#include "zarquette/ParamTempo.h"
#include "zarquette/ParamVinRouge.h"

#include <memory>

namespace zarquette
{
namespace
{

// Lower numbers are the first a host that cannot automate all of them gets.
constexpr int tempo_priority = 0;
constexpr int other_priority = 2;

template <class Param>
void add_from_zero(lumo::PluginInternal& effect)
{
    auto param = std::make_shared<Param>();
    param->init(0.0, other_priority);
    effect.add_param(param);
}

}  // namespace

lumo::AudioPort ZarquetteIdentity::make_input_port()
{
    return lumo::AudioPort("Input", {"Left input", "Right input"});
}

lumo::AudioPort ZarquetteIdentity::make_output_port()
{
    return lumo::AudioPort("Output", {"Left output", "Right output"});
}

void ZarquetteIdentity::add_params(lumo::PluginInternal& effect)
{
    auto tempo = std::make_shared<ParamTempo>();
    tempo->init_tempo(120.0, tempo_priority, effect.use_tempo_record());
    effect.add_param(tempo);
    add_from_zero<ParamBof>(effect);
    add_from_zero<ParamGauloises>(effect);
    add_from_zero<ParamNuke>(effect);
    add_from_zero<ParamOignons>(effect);
    add_from_zero<ParamVinRouge>(effect);
}

}  // namespace zarquette
