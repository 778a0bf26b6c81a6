// SPDX-License-Identifier: GPL-3.0-or-later
// Boxes with a text that the user types: a field of the window system lies over the box meanwhile.
//
// Return commits what was typed, escape drops it, and a click elsewhere commits it, too. [window thread],
// except for parameterChanged.
#pragma once

#include "Tovrane/views/controls/CParamDisplay.h"
#include "Tovrane/views/controls/ValueDrag.h"
#include "Tovrane/views/controls/ValueStep.h"
#include "Tovrane/window/IOSTextEdit.h"
#include "Tovrane/window/ITextEditCallback.h"

#include <functional>
#include <memory>
#include <string>

namespace Tovra
{
// A box with a text of its own.
class CTextEdit : public CParamDisplay, protected ITextEditCallback
{
public:
    CTextEdit(const CRect& rect, CControlListener* listener, long tag, const char* text,
              CBitmap* background = nullptr, long style = 0);
    explicit CTextEdit(const CTextLabelInfo& info);
    CTextEdit(const CTextEdit&) = delete;
    ~CTextEdit() override;

    // At most 255 bytes, cut between two characters; null counts as empty.
    virtual void setText(const char* next);
    virtual const char* getText() const { return text.c_str(); }
    // What becomes of a text that was typed, before it is taken; false refuses it.
    virtual void setTextEditConvert(std::function<bool(std::string& typed)> convert);
    // Opens the field over the box. Does nothing without a frame, or if it is open.
    virtual void edit();
    bool isEditing() const { return field != nullptr; }

    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    long onKeyDown(TovraKeyCode& code) override;
    long onKeyUp(TovraKeyCode& code) override;
    void looseFocus() override;
    bool removed(CView* parent) override;
    void setViewSize(const CRect& rect, bool invalidate = true) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CTextEdit"; }

protected:
    // The text with which the field opens, and what was typed into it, another one.
    virtual std::string editedText() const { return text; }
    virtual void commit(const std::string& typed);
    virtual bool isEditable() const { return true; }

    CColor textEditGetBackColor() const override;
    CColor textEditGetFontColor() const override;
    CRect textEditGetSize() const override;
    CRect textEditGetVisibleSize() const override;
    void textEditLooseFocus(bool byReturn) override;
    long textEditOnKeyDown(const TovraKeyCode& code) override;
    void convertPluginToWorld(CRect& rect) const override;

private:
    void closeField(bool takesText);

    std::string text;
    std::function<bool(std::string&)> convertTyped;
    std::unique_ptr<IOSTextEdit> field; // while the user types
};

// A box with the value of a parameter: a drag changes it as a dial does, a double click opens it for typing.
// What is typed is read as what is shown (Orbel::readPropertyText); what cannot be read changes nothing. The
// text of a text parameter is typed only; it goes to the caller.
class Tovra_TextEdit : public CTextEdit
{
public:
    struct CInfo : CTextLabelInfo
    {
        void createObject() override;
        bool editable = true;
        // For text parameters: gets what was typed, at most 255 bytes.
        std::function<void(const std::string& typed)> onText;
    };

    explicit Tovra_TextEdit(const CInfo& info);

    // Whether the user can change it.
    void setEditable(bool flag) { editable = flag; }
    void setZoomFactor(float factor) { drag.setZoomFactor(factor); }
    DeadZone& deadZone() { return drag.deadZone(); }
    // What a value has as text and back, in place of the parameter's own; fromText writes the parameter, or
    // refuses by false. Both may be empty.
    void setRenderers(std::function<std::string(Orbel::ParameterProperty&)> toText,
                      std::function<bool(Orbel::ParameterProperty&, const std::string&)> fromText);
    std::string shownText() const;

    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    bool holdsMouse() const override { return isEdited(); }
    using CTextEdit::onWheel;
    bool onWheel(const CPoint& where, const float& distance, const long& buttons) override;
    long onKeyDown(TovraKeyCode& code) override;
    void cancelEdit() override;
    void takeFocus() override { edit(); }
    void parameterChanged(Orbel::ParameterProperty* property) override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "Tovra_TextEdit"; }

protected:
    std::string editedText() const override { return shownText(); }
    void commit(const std::string& typed) override;
    bool isEditable() const override { return editable; }
    // The user moved the value to this place, which may lie beyond the range: stores it and tells the host.
    virtual void write(float next);

private:
    bool writeTyped(Orbel::ParameterProperty& property, const std::string& typed,
                    std::optional<float> number);
    void stepBy(const ValueStep& step);
    void showCursor(bool isDragging);

    bool editable;
    const bool rendersUnits;
    ValueDrag drag;
    long button = 0; // that opened the gesture
    std::function<void(const std::string&)> onText;
    std::function<std::string(Orbel::ParameterProperty&)> toText;
    std::function<bool(Orbel::ParameterProperty&, const std::string&)> fromText;
};
}
