// SPDX-License-Identifier: GPL-3.0-or-later
// A view that draws with a function, and the colours and captions of the gallery's pages.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/tree/CView.h"

#include <functional>
#include <string>

namespace Gallery
{
inline constexpr Tovra::CColor ground{34, 36, 41, 255};
inline constexpr Tovra::CColor panel{46, 49, 56, 255};
inline constexpr Tovra::CColor edge{74, 79, 89, 255};
inline constexpr Tovra::CColor ink{222, 225, 231, 255};
inline constexpr Tovra::CColor faint{138, 144, 156, 255};
inline constexpr Tovra::CColor accent{245, 166, 66, 255};
inline constexpr Tovra::CColor cool{84, 176, 214, 255};
inline constexpr Tovra::CColor leaf{122, 193, 108, 255};

// [window thread]  Draws in the view's own coordinates: (0, 0) is its top left.
class Sketch : public Tovra::CView
{
public:
    using Draw = std::function<void(Tovra::CDrawContext&)>;

    Sketch(const Tovra::CRect& rect, Draw drawing);

    void draw(Tovra::CDrawContext* context) override;
    CView* newCopy() const override { return new Sketch(*this); }

private:
    Draw drawing;
};

void drawText(Tovra::CDrawContext& context, const std::string& text, const Tovra::CRect& rect,
              Tovra::CHoriTxtAlign align = Tovra::kTextLeft, Tovra::CColor color = ink, double size = 12.0,
              long style = 0);
// A small line of text, below or beside what it describes.
void drawCaption(Tovra::CDrawContext& context, const std::string& text, const Tovra::CRect& rect,
                 Tovra::CHoriTxtAlign align = Tovra::kTextLeft);
// A flat panel with a hair line around it, on whole pixels.
void drawPanel(Tovra::CDrawContext& context, const Tovra::CRect& rect, Tovra::CColor color = panel);
}
