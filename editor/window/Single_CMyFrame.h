// SPDX-License-Identifier: GPL-3.0-or-later
// The frame of the product's window, with a line of text about what is under the mouse. [window thread]
#pragma once

#include "Tovrane/views/tree/CFrame.h"

namespace Tovra
{
class CTextLabel;
}

class Single_CMyFrame : public Tovra::CFrame
{
public:
    using Tovra::CFrame::CFrame;

    // The label is the frame's own view; null for none.
    void setReadOutLabel(Tovra::CTextLabel* label) { readOutLabel = label; }
    void setDataReadOutText(const char* text) override;
    void close() override;
    const char* getClassName() const override { return "Single_CMyFrame"; }

private:
    Tovra::CTextLabel* readOutLabel = nullptr;
};
