// SPDX-License-Identifier: GPL-3.0-or-later
// How a one-line text field looks, and where its characters lie.
#pragma once

#include "Tovrane/draw/CColor.h"
#include "Tovrane/platform/parts/EditLine.h"

#include <vector>

namespace Tovra
{
class CDrawContext;

// [window thread]
class EditLinePainter
{
public:
    CColor back; // both drawn opaque
    CColor font;
    bool isFocused = true; // if not, there is no caret, and the selection is paler
    bool isCaretOn = true;

    // The size of the whole field in pixels, and what of it is clipped away to the left and above.
    void setField(double width, double height, double clippedLeft = 0.0, double clippedTop = 0.0);
    // Shows the text from its start again.
    void scrollBack() { scrolled = 0.0; }

    // Moves the text so that the caret is seen. (0, 0) of the context is the top left of what is seen.
    void draw(CDrawContext& context, const EditLine& line);
    // The position in the text, in bytes, that is nearest to x.
    std::size_t positionAt(CDrawContext& context, const EditLine& line, double x) const;

    // Where the caret was drawn, from the left of what is seen, in pixels.
    double caretX() const { return caretLeft; }

private:
    std::vector<double> measure(CDrawContext& context, const EditLine& line) const;
    void keepCaretInSight(const std::vector<double>& edges, std::size_t caret);

    double fontSize = 12.0;
    double left = 0.0; // of what is seen, in the field
    double top = 0.0;
    double fieldWidth = 1.0;
    double fieldHeight = 1.0;
    double scrolled = 0.0;
    double caretLeft = 0.0;
};
}
