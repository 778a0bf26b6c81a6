// SPDX-License-Identifier: GPL-3.0-or-later
#include "Sonvex/MessageBox.h"
#include "Tovrane/base/Kept.h"
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/window/IFileSelector.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/LiveViews.h"
#include "tools/gallery/Sketch.h"

#include <algorithm>
#include <cmath>

using namespace Tovra;

namespace Gallery
{
namespace
{
const Message notice{
    Sonvex::kMessageBoxOk, "Not Saved",
    "The preset \"100%s %n \xC3\xA4\xC3\xB6\xC3\xBC\" could not be written.\n\n"
    "/home/musician/.local/share/Presets/AVeryLongNameWithoutAnySpaceThatHasToBeBrokenSomewhere.dks "
    "is read-only."};
const Message question{Sonvex::kMessageBoxYesNo, "Delete Preset",
                       "Do you really want to delete \"Off-beat breath\" ?"};

// What a message dims.
void drawGround(CDrawContext& context, const CRect& rect)
{
    drawPanel(context, rect);
    const int leaves = int(std::ceil((rect.getWidth() - 20.0) / 12.0));
    for (int i = 0; i < leaves; ++i)
    {
        const double x = rect.left + 10.0 + 12.0 * i;
        context.setFillColor(leaf);
        context.drawRect(
            {x, rect.bottom - 12.0 - std::max(0.0, rect.right - 10.0 - x) * 0.25, x + 8.0, rect.bottom - 8.0},
            kFilled);
    }
    drawText(context, "What lies below stays to be seen.",
             {rect.left + 12, rect.top + 6, rect.right, rect.top + 26}, kTextLeft, accent);
}

// A part of the page that looks like a frame with a message; the keys and the mouse find a real one.
CMessageView* addMessage(CFrame& frame, const CRect& rect, const Message& message)
{
    frame.addView(new Sketch(rect,
                             [rect](CDrawContext& context) {
                                 drawGround(context, {0, 0, rect.getWidth(), rect.getHeight()});
                             }));
    const auto view = new CMessageView(rect, message, nullptr);
    frame.addView(view);
    return view;
}

void ask(AskButton& button, const Message& message)
{
    Sonvex::openMessageBox(button.getFrame(), message.type, message.title.c_str(), message.body,
                           [self = Kept<AskButton>(&button)](int answer)
                           { self->show("answer " + std::to_string(answer)); });
}

void askForFiles(AskButton& button)
{
    const auto panel = Kept<IFileSelector>::adopt(button.getFrame()->createFileSelector());
    if (!panel)
        return;
    const FileSelectorOptions options{
        FileSelectorOptions::openFiles, "Open Presets", {{"Presets", "dks"}, {"All files", "*"}}, "", ""};
    panel->run(options,
               [self = Kept<AskButton>(&button)](const std::vector<std::string>& paths)
               {
                   const std::size_t name = paths.empty() ? 0 : paths[0].rfind('/') + 1;
                   self->show(paths.empty() ? "no file" : paths[0].substr(name));
               });
}
}

void fillMessages(CFrame& frame)
{
    addMessage(frame, {16, 44, 344, 330}, notice);
    CMessageView* const asking = addMessage(frame, {360, 44, 624, 330}, question);
    const CRect& yes = asking->buttonRect(1);
    CPoint onYes(yes.left + 8.0, yes.top + 8.0);
    asking->onMouseMoved(onYes, 0);
    frame.addView(
        new AskButton({16, 366, 200, 394}, "click for a message", [](AskButton& b) { ask(b, notice); }));
    frame.addView(
        new AskButton({216, 366, 400, 394}, "click for a question", [](AskButton& b) { ask(b, question); }));
    frame.addView(new AskButton({416, 366, 624, 394}, "click for a file panel", askForFiles));
    frame.addView(new Sketch(
        {16, 334, 624, 352},
        [](CDrawContext& context)
        {
            drawCaption(context, "a message", {0, 0, 328, 18}, kTextCenter);
            drawCaption(context, "a question, the mouse over \"Yes\"", {344, 0, 608, 18}, kTextCenter);
        }));
}
}
