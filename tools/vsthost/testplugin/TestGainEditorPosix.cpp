#include "TestGainEditor.h"

namespace testgain
{

// No window system is linked into the Linux build of the test plug-in.
TestGainEditor::~TestGainEditor() = default;

bool TestGainEditor::is_available()
{
    return false;
}

bool TestGainEditor::open(void*)
{
    return false;
}

void TestGainEditor::close()
{
}

void TestGainEditor::idle()
{
}

}  // namespace testgain
