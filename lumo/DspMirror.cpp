#include "lumo/DspMirror.h"

#include "lumo/HostDspInterface.h"
#include "lumo/NormalizedParamInterface.h"
#include "lumo/ProgramSlot.h"
#include "lumo/SettingKeys.h"

#include <algorithm>
#include <utility>

namespace lumo
{

DspMirror::DspMirror(Shape shape) : _shape(std::move(shape))
{
}

DspMirror::~DspMirror()
{
    delete _host;
}

void DspMirror::init()
{
    if (_shape.add_params != nullptr)
    {
        _shape.add_params(*this);
    }
}

void DspMirror::set_host(HostDspInterface* host)
{
    if (host != _host)
    {
        delete _host;
    }
    _host = host;
}

const AudioPort& DspMirror::use_input_port(int port) const
{
    return _shape.inputs[static_cast<std::size_t>(port)];
}

const AudioPort& DspMirror::use_output_port(int port) const
{
    return _shape.outputs[static_cast<std::size_t>(port)];
}

std::string DspMirror::get_setting_str(const char* key) const
{
    return is_setting_key(key, setting_key::plugin_name) ? _shape.plugin_name : std::string();
}

void DspMirror::set_program_data(const ProgramSlot& program)
{
    const int n = std::min(program.get_nbr_values(), get_nbr_param());
    for (int i = 0; i < n; ++i)
    {
        use_param(i).set_norm_value(program.get_value(i));
    }
}

// The effect renders in its own process; nothing here has audio to write.
void DspMirror::process_replacing(float* const* /*outputs*/, const float* const* /*inputs*/, int /*frames*/,
                                  int /*reserved*/)
{
}

void DspMirror::process_adding(float* const* /*outputs*/, const float* const* /*inputs*/, int /*frames*/,
                               int /*reserved*/)
{
}

}  // namespace lumo
