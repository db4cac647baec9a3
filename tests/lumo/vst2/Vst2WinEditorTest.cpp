// The editor host between a VST 2 host and an editor: which size the host is
// given, what open answers, and how tempo changes from the audio thread reach
// the editor only at its idle and only as the latest one.
#include "lumo/vst2/Vst2WinEditor.h"

#include "gadu/OffscreenWindow.h"
#include "lumo/GuiInterface.h"
#include "tests/lumo/gui/FakeHostGui.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

class FakeGui : public lumo::GuiInterface
{
public:
    void init() override {}
    void set_default_state() override {}
    void restore() override {}
    lumo::HostGuiInterface* use_host() override { return &host; }
    void set_host(lumo::HostGuiInterface* /*host*/) override {}
    lumo::DspInterface* use_dsp() override { return nullptr; }
    void set_dsp(lumo::DspInterface* /*dsp*/) override {}
    void set_window(gadu::WindowInterface* w) override { window = w; }
    gadu::WindowInterface* use_window() override { return window; }
    void get_size(int& w, int& h) const override
    {
        w = 512;
        h = 384;
    }
    void get_size_resizable(int& w, int& h) const override
    {
        w = 70000;
        h = 200;
    }
    int open(void* parent) override
    {
        opened_with = parent;
        return open_answer;
    }
    void close() override { ++closes; }
    void param_changed(int /*index*/, float /*value*/, int /*level*/) override {}
    void on_reserved(int /*a*/, int /*b*/) override {}
    void bank_changed(const lumo::BankManager& /*bank*/) override {}
    void set_tempo(float bpm) override { tempos.push_back(bpm); }
    void midi_learn_changed(int /*index*/, int /*state*/) override {}

    lumo_test::FakeHostGui host;
    gadu::WindowInterface* window = nullptr;
    void* opened_with = nullptr;
    int open_answer = 0;
    int closes = 0;
    std::vector<float> tempos;
};

class EditorHost : public ::testing::Test
{
protected:
    EditorHost() : editor(nullptr, gui, std::make_unique<gadu::OffscreenWindow>(100, 100)) {}

    FakeGui gui;
    lumo::Vst2WinEditor editor;
};

}  // namespace

TEST_F(EditorHost, TheEditorGetsTheWindowTheHostItsSizeAndOpenItsAnswer)
{
    EXPECT_EQ(gui.window, &editor.use_window());
    lumo::vst2::ERect* rect = nullptr;
    ASSERT_TRUE(editor.get_rect(&rect));
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(rect->bottom, 384);
    EXPECT_EQ(rect->right, 512);
    // A host that can resize is given the resizable size, cut to 16 bits.
    gui.host.can_resize = 1.0;
    ASSERT_TRUE(editor.get_rect(&rect));
    EXPECT_EQ(rect->bottom, 200);
    EXPECT_EQ(rect->right, static_cast<std::int16_t>(70000 & 0xFFFF));
    EXPECT_FALSE(editor.get_rect(nullptr));

    // Open answers whether the editor opened.
    int parent = 0;
    EXPECT_TRUE(editor.open(&parent));
    EXPECT_EQ(gui.opened_with, &parent);
    editor.close();
    EXPECT_EQ(gui.closes, 1);
    gui.open_answer = -1;
    EXPECT_FALSE(editor.open(&parent));
}

TEST_F(EditorHost, OnlyTheLastPostedTempoReachesTheEditorAtIdle)
{
    editor.post_tempo(100.0f);
    editor.post_tempo(133.0f);
    EXPECT_TRUE(gui.tempos.empty());
    editor.idle();
    editor.idle();
    ASSERT_EQ(gui.tempos.size(), 1u);
    EXPECT_EQ(gui.tempos[0], 133.0f);
    editor.post_tempo(0.0f);
    editor.idle();
    EXPECT_EQ(gui.tempos.size(), 1u);
}
