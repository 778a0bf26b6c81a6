// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of the product's window, with a line of text about what is under the mouse. [window thread]
#pragma once

#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
class CTextLabel;
class CToggleDisplay;
}

class Single_CMyFrame : public Tovra::CFrame
{
public:
    using Tovra::CFrame::CFrame;

    // Both are views of the frame; null for none.
    void setReadOutLabel(Tovra::CTextLabel* label) { readOutLabel = label; }
    void setToggleDisplay(Tovra::CToggleDisplay* panel) { toggleDisplay = panel; }
    void setDataReadOutText(const char* text) override;
    void applyMarks() override;
    void close() override;
    const char* getClassName() const override { return "Single_CMyFrame"; }

private:
    Tovra::CTextLabel* readOutLabel = nullptr;
    Tovra::CToggleDisplay* toggleDisplay = nullptr;
};
