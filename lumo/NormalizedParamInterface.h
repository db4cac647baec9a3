#pragma once

#include "lumo/NotifierInterface.h"

#include <atomic>

namespace lumo
{

class NotifiedInterface;

// One automatable quantity, seen two ways: its natural value (in the unit a user
// reads) and its normalized value in [0, 1], the only form that crosses the host
// boundary, the bank and the editor.
//
// Values are written by whichever thread changes the parameter and read by the
// audio thread after the listener's flag: they are atomics written first, the
// flag after (see NotificationFlag).
class NormalizedParamInterface : public NotifierInterface
{
public:
    ~NormalizedParamInterface() override = default;

    // natural := default; normalized and the default field := nat_to_norm(default);
    // second := 0; automation priority := priority.
    virtual void init(double nat_default, int automation_priority);

    virtual void get_name(char* text, int capacity) const = 0;
    virtual void get_unit(char* text, int capacity) const = 0;
    // 0: continuous; 1: integer steps.
    virtual int get_type() const = 0;
    virtual bool is_enabled() const = 0;
    // Runs after the value fields were written, before the listener is told.
    virtual void update() = 0;
    virtual double get_nat(int unused) const;
    virtual float get_second(int unused) const;
    virtual double norm_to_nat(float norm) const = 0;
    virtual double nat_to_norm(double nat) const = 0;
    virtual void get_display(char* text, int capacity, double nat) const = 0;
    // Sets ok to true only when the text was understood; leaves it alone otherwise.
    virtual double parse_display(const char* text, bool& ok) const = 0;

    float get_norm() const { return norm.load(std::memory_order_relaxed); }
    double get_nat_value() const { return nat.load(std::memory_order_relaxed); }
    NotifiedInterface* use_listener() const { return listener.load(std::memory_order_acquire); }
    void set_listener(NotifiedInterface* l) { listener.store(l, std::memory_order_release); }

    // The common change path: store both views, post-process, tell the listener.
    void set_norm_value(float value);
    void set_nat_value(double value);
    void notify_listener();

    std::atomic<NotifiedInterface*> listener{nullptr};
    std::atomic<double> nat{0.0};
    std::atomic<float> norm{0.0f};
    int automation_priority = -1;
    float second = 0.0f;
    float default_norm = 0.0f;
};

}  // namespace lumo
