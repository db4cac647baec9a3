#pragma once

#include "lumo/NormalizedParamInterface.h"

#include <atomic>

namespace lumo
{
struct TempoRecord;
}

namespace zarquette
{

// "Tempo", 60 to 240 BPM. Either leads (its value is written to the plug-in's
// tempo record) or, when the host reports a tempo, follows the record.
class ParamTempo : public lumo::NormalizedParamInterface
{
public:
    void get_name(char* text, int capacity) const override;
    void get_unit(char* text, int capacity) const override;
    int get_type() const override { return 0; }
    bool is_enabled() const override { return true; }
    void update() override;
    double norm_to_nat(float norm) const override;
    double nat_to_norm(double nat) const override;
    void get_display(char* text, int capacity, double nat) const override;
    // A number of BPM, clamped to 60 .. 240.
    double parse_display(const char* text, bool& ok) const override;

    void init_tempo(double nat_default, int automation_priority, lumo::TempoRecord* source);
    void set_use_host_tempo(bool use);
    bool get_use_host_tempo() const { return _use_host_tempo.load(std::memory_order_relaxed); }
    void set_host_tempo(float bpm);

private:
    lumo::TempoRecord* _source = nullptr;
    std::atomic<bool> _use_host_tempo{false};
};

}  // namespace zarquette
