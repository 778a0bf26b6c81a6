// SPDX-License-Identifier: GPL-3.0-or-later
// A box with the text of a value. The classes that show a parameter, a fixed text, a field or a menu derive
// from it. [window thread]
#pragma once

#include "Tovrane/draw/CColor.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/tree/CControl.h"
#include "Tovrane/views/tree/Tovra_ObjectConstructorInfoBase.h"

#include <functional>
#include <string>

namespace Tovra
{
enum CTxtFace : int
{
    kNormalFace = 0,
    kBoldFace = 1
};

// Describes what shows text: its place and parameter, and its looks.
struct CTextLabelInfo : Tovra_ObjectConstructorInfoBase
{
    bool mouseEnabled = true; // without it the display takes no events, and has no mouseable area
    CHoriTxtAlign alignment = kTextCenter;
    long style = 0;            // of CParamDisplay
    CFontDesc* font = nullptr; // null for the usual one
    int fontSize = 0;          // 0 for the font's own
    CColor textColor = kWhiteCColor;
    CColor frameColor = kGreyCColor;
    bool transparency = false;
    bool renderUnits = true;
    bool renderUnitsInSecondLine = false;
};

class CParamDisplay : public CControl
{
public:
    // Bits of the style word.
    enum Style : long
    {
        kNoBack = 1,
        kNoFrame = 2,
        kShadowText = 4,    // the text once more, below it, in the shadow's colour
        kCheckStyle = 0x400 // for menus: the entry that was chosen is checked, and no other one
    };

    explicit CParamDisplay(const CRect& rect, CBitmap* background = nullptr, long style = 0);
    // As described, but for the attached property.
    explicit CParamDisplay(const CTextLabelInfo& info);

    // Each of these marks the control as dirty only if it changes something. The caller owns the font.
    virtual void setFont(CFontDesc* newFont, int size);
    virtual void setFontColor(CColor color);
    virtual void setBackColor(CColor color);
    virtual void setFrameColor(CColor color);
    virtual void setShadowColor(CColor color);
    virtual void setHoriAlign(CHoriTxtAlign align);
    virtual void setStyle(long bits);
    virtual void setTxtFace(CTxtFace newFace);
    long getStyle() const { return style; }
    CColor getFontColor() const { return fontColor; }
    CColor getBackColor() const { return backColor; }

    // Turns the value into the text, in place of a number with two decimals.
    virtual void setStringConvert(std::function<std::string(float)> convert);
    // Reads a text that was typed; false refuses it. Without it the text is read as a number.
    virtual void setString2FloatConvert(std::function<bool(const char*, float&)> convert);

    void draw(CDrawContext* context) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new CParamDisplay(*this); }
    const char* getClassName() const override { return "CParamDisplay"; }

protected:
    void drawBack(CDrawContext* context);
    void drawText(CDrawContext* context, const std::string& text, const CRect& rect);
    std::string textOfValue() const;
    bool valueOfText(const char* text, float& read) const;

private:
    template <typename Value>
    void change(Value& member, const Value& next);

    CFontDesc* font;
    int fontSize = 0; // 0 for the font's own
    CColor fontColor = kWhiteCColor;
    CColor backColor = kBlackCColor;
    CColor frameColor = kGreyCColor;
    CColor shadowColor = kBlackCColor;
    CHoriTxtAlign alignment = kTextCenter;
    CTxtFace face = kNormalFace;
    long style;
    std::function<std::string(float)> toText;
    std::function<bool(const char*, float&)> toValue;
};

// A text that does not depend on a value.
class CTextLabel : public CParamDisplay
{
public:
    CTextLabel(const CRect& rect, const char* text, CBitmap* background = nullptr, long style = 0);

    // UTF-8; null counts as empty.
    virtual void setText(const char* next);
    virtual const char* getText() const { return text.c_str(); }

    void draw(CDrawContext* context) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return new CTextLabel(*this); }
    const char* getClassName() const override { return "CTextLabel"; }

private:
    std::string text;
};
}
