// SPDX-License-Identifier: GPL-3.0-or-later
// The view's side of a text field, which writes down how the field ended.
#pragma once

#include "Tovrane/window/IOSTextEdit.h"
#include "Tovrane/window/ITextEditCallback.h"
#include "Tovrane/window/TovraKeyCode.h"

#include <functional>
#include <string>

class FieldOwner : public Tovra::ITextEditCallback
{
public:
    Tovra::CColor textEditGetBackColor() const override { return {33, 32, 33, 0}; }
    Tovra::CColor textEditGetFontColor() const override { return {230, 232, 236, 255}; }
    Tovra::CRect textEditGetSize() const override { return size; }
    Tovra::CRect textEditGetVisibleSize() const override { return visible; }
    void textEditLooseFocus(bool byReturn) override
    {
        ended = byReturn ? "return" : "escape";
        if (onEnd)
            onEnd();
    }
    long textEditOnKeyDown(const Tovra::TovraKeyCode& code) override
    {
        return code.virtualKey == Tovra::kVirtualF1 ? Tovra::kKeyConsumed : Tovra::kKeyNotHandled;
    }
    void convertPluginToWorld(Tovra::CRect&) const override {}

    Tovra::CRect size{50.0, 40.0, 210.0, 60.0};
    Tovra::CRect visible = size;
    std::string ended;
    std::function<void()> onEnd;
};
