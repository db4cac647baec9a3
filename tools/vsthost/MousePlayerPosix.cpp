#include "MousePlayer.h"

namespace vsthost
{

// The Linux build opens no editor windows: there is nothing to click on.
void MousePlayer::play(const MouseScript::Step&)
{
}

}  // namespace vsthost
