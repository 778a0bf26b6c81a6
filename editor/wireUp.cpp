// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/wireUp.h"

#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/views/controls/MessagePresenter.h"

void wireUp()
{
    Tovra::useHeadlessFrames();
    Tovra::useX11Frames();
    Tovra::useMessageViews();
}
