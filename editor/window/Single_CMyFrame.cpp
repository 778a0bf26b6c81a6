// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/window/Single_CMyFrame.h"

#include "Tovrane/views/controls/CParamDisplay.h"

void Single_CMyFrame::setDataReadOutText(const char* text)
{
    if (readOutLabel != nullptr)
        readOutLabel->setText(text);
}

// Controls that go clear the read-out.
void Single_CMyFrame::close()
{
    readOutLabel = nullptr;
    CFrame::close();
}
