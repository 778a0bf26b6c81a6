// SPDX-License-Identifier: GPL-3.0-or-later
// The ids of the view's interfaces, which no file of Debian's copy defines.
#include "pluginterfaces/gui/iplugview.h"

namespace Steinberg
{
DEF_CLASS_IID(IPlugView)
DEF_CLASS_IID(IPlugFrame)
namespace Linux
{
DEF_CLASS_IID(IEventHandler)
DEF_CLASS_IID(ITimerHandler)
DEF_CLASS_IID(IRunLoop)
}
}
