#pragma once

#include "gadu/Picture.h"

namespace gadu
{

// An entry of a control's list of frames (a knob's layers, a switch's
// states): a picture, and whether one was given, since a list may be longer
// than the pictures set into it.
struct PresentPicture
{
    Picture picture;
    bool present = false;
};

}  // namespace gadu
