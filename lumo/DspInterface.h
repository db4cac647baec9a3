#pragma once

#include <string>

namespace basic
{
class SerializableInterface;
template <class T>
class LockFreeBuffer;
}  // namespace basic

namespace lumo
{

class AudioPort;
class BankManager;
class BkgInterface;
class GuiInterface;
class HostDspInterface;
class NormalizedParamInterface;
class ProgramSlot;
class SettingMgr;

// The audio side of a plug-in as the framework sees it. Used as a virtual base,
// so an effect assembled from several framework bases has exactly one of it.
class DspInterface
{
public:
    virtual ~DspInterface() = default;

    // Life cycle, driven by the host adapter on the host's main thread.
    virtual void init() = 0;
    virtual void set_default_state() = 0;
    virtual void restore() = 0;

    // The audio side owns its host service and deletes it in its destructor;
    // the editor is not owned and may be null.
    virtual HostDspInterface* use_host() = 0;
    virtual void set_host(HostDspInterface* host) = 0;
    virtual GuiInterface* use_gui() = 0;
    virtual void set_gui(GuiInterface* gui) = 0;

    virtual SettingMgr& use_setting_mgr() = 0;
    virtual const SettingMgr& use_setting_mgr() const = 0;

    virtual int get_nbr_input_ports() const = 0;
    virtual const AudioPort& use_input_port(int port) const = 0;
    virtual int get_nbr_output_ports() const = 0;
    virtual const AudioPort& use_output_port(int port) const = 0;

    // Two figures of the effect that no part of the framework reads.
    virtual int get_reserved_a() const = 0;
    virtual int get_reserved_b() const = 0;

    virtual void set_sample_freq(float hz) = 0;

    virtual int get_nbr_param() const = 0;
    // index must be below get_nbr_param().
    virtual NormalizedParamInterface& use_param(int index) = 0;

    virtual void set_program_name(const std::string& name) = 0;
    virtual std::string get_program_name() const = 0;

    // A mapped control whose index is not a parameter.
    virtual void set_extra_value(int index, float value) = 0;

    // Lets the audio side take the newest bank the main thread published.
    virtual void take_bank(basic::LockFreeBuffer<BankManager>& buffer) = 0;

    // Setting queries: 0.0 or the empty text for unknown keys.
    virtual double get_setting_num(const char* key) const = 0;
    virtual std::string get_setting_str(const char* key) const = 0;

    virtual void reset() = 0;
    virtual void set_tempo(float bpm) = 0;
    virtual void on_gui_close() = 0;
    virtual void set_reserved_ptr(void* ptr) = 0;

    // A background job the audio side wants run; the adapter owns the result.
    virtual BkgInterface* create_bkg_task() = 0;
    // When not null, chunks store this object instead of the programs.
    virtual basic::SerializableInterface* use_chunk_serializer() = 0;
    virtual int get_reserved_c() const = 0;

    virtual void set_program_data(const ProgramSlot& program) = 0;
    virtual void get_program_data(ProgramSlot& program) = 0;
    virtual void get_param_values(ProgramSlot& program) const = 0;

    // Audio: frames of every output channel are written. Outputs may alias inputs.
    virtual void process_replacing(float* const* outputs, const float* const* inputs, int frames,
                                   int reserved) = 0;
    virtual void process_adding(float* const* outputs, const float* const* inputs, int frames,
                                int reserved) = 0;
};

}  // namespace lumo
