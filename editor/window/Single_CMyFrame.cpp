// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/window/Single_CMyFrame.h"

#include "Tovrane/views/controls/CParamDisplay.h"
#include "editor/panel/CToggleDisplay.h"

void Single_CMyFrame::setDataReadOutText(const char* text)
{
    if (readOutLabel != nullptr)
        readOutLabel->setText(text);
}

// What other threads have marked lies below the panel, too.
void Single_CMyFrame::applyMarks()
{
    CFrame::applyMarks();
    if (toggleDisplay != nullptr)
        toggleDisplay->coverDirt();
}

// Controls that go clear the read-out.
void Single_CMyFrame::close()
{
    readOutLabel = nullptr;
    toggleDisplay = nullptr;
    CFrame::close();
}
