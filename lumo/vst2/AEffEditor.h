#pragma once

#include "lumo/vst2/Vst2Abi.h"

namespace lumo
{

class AudioEffect;

// What the host sees of a plug-in's editor: rectangle, open, close, idle, keys.
// The defaults are those of a plug-in that draws nothing.
class AEffEditor
{
public:
    explicit AEffEditor(AudioEffect* effect) : _effect(effect) {}
    virtual ~AEffEditor() = default;
    AEffEditor(const AEffEditor&) = delete;
    AEffEditor& operator=(const AEffEditor&) = delete;

    // Gives the host a pointer to the editor's rectangle; true when there is one.
    virtual bool get_rect(vst2::ERect** rect);
    virtual bool open(void* parent);
    virtual void close();
    virtual void idle();
    // -1: not handled.
    virtual int on_key_down() { return -1; }
    virtual int on_key_up() { return -1; }
    virtual int set_knob_mode(int /*mode*/) { return 0; }

protected:
    AudioEffect* use_effect() const { return _effect; }
    void* get_parent() const { return _parent; }

private:
    AudioEffect* _effect;
    void* _parent = nullptr;
};

}  // namespace lumo
