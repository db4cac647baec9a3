#include "lumo/vst2/Vst2Entry.h"

#include "lumo/BankManager.h"
#include "lumo/DspInterface.h"
#include "lumo/GuiInterface.h"
#include "lumo/midi/MidiReceiverInterface.h"
#include "lumo/vst2/HostDspVst2Win.h"
#include "lumo/vst2/HostGuiVst2Win.h"
#include "lumo/vst2/Vst2WinPlugin.h"

#include <memory>
#include <new>

namespace lumo
{
namespace
{

void on_allocation_failure()
{
    throw std::bad_alloc();
}

// Steps up to the wiring: any failure deletes what was built so far.
std::unique_ptr<Vst2WinPlugin> build(vst2::HostCallback host, const Vst2PluginRecipe& recipe)
{
    std::unique_ptr<DspInterface> dsp(recipe.create_dsp());
    auto host_dsp = std::make_unique<HostDspVst2Win>();
    std::unique_ptr<GuiInterface> gui(recipe.create_gui != nullptr ? recipe.create_gui() : nullptr);
    std::unique_ptr<HostGuiVst2Win> host_gui(gui != nullptr ? new HostGuiVst2Win() : nullptr);

    // The bank the plug-in starts from: one program, every value 0.
    BankManager bank;
    ProgramSlot program = bank.use_program(0);
    program.set_nbr_values(recipe.nbr_params);
    bank.set_program(0, program);

    auto* receiver = dynamic_cast<MidiReceiverInterface*>(dsp.get());
    auto adapter = std::make_unique<Vst2WinPlugin>(host, dsp.get(), gui.get(), receiver, bank, recipe.unique_id);
    adapter->take_sides();
    DspInterface* d = dsp.release();
    GuiInterface* g = gui.release();

    host_dsp->set_adapter(adapter.get());
    d->set_host(host_dsp.release());
    if (g != nullptr)
    {
        host_gui->set_adapter(adapter.get());
        g->set_host(host_gui.release());
    }
    d->set_gui(g);
    if (g != nullptr)
    {
        g->set_dsp(d);
    }
    return adapter;
}

}  // namespace

vst2::AEffect* vst2_entry(vst2::HostCallback host, const Vst2PluginRecipe& recipe)
{
    try
    {
        std::set_new_handler(&on_allocation_failure);
        if (host == nullptr || host(nullptr, static_cast<std::int32_t>(vst2::HostOp::version), 0, 0, nullptr, 0.0f) == 0)
        {
            return nullptr;
        }
        std::unique_ptr<Vst2WinPlugin> adapter = build(host, recipe);
        adapter->set_registry_path(recipe.registry_path);
        adapter->init_step();
        adapter->default_step();
        adapter->select_program(0);
        return adapter.release()->use_aeffect();
    }
    catch (...)
    {
        return nullptr;
    }
}

}  // namespace lumo
