#pragma once

namespace zarquette
{

class ZarquetteGui;

// A part of the editor's screen; it builds its controls from the editor's
// artwork and binds them through the editor.
class GuiPart
{
public:
    explicit GuiPart(ZarquetteGui& editor) : _editor(editor) {}
    virtual ~GuiPart() = default;
    GuiPart(const GuiPart&) = delete;
    GuiPart& operator=(const GuiPart&) = delete;

protected:
    ZarquetteGui& use_editor() const { return _editor; }

private:
    ZarquetteGui& _editor;
};

}  // namespace zarquette
