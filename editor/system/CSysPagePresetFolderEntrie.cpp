// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/system/CSysPagePresetFolderEntrie.h"

#include "CORE/Utf8.h"
#include "Sonvex/MessageBox.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/platform/parts/ChildProcess.h"
#include "Tovrane/views/controls/CFileSelector.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/tree/CFrame.h"
#include "effect/instance/CQDT_DKS_Single.h"

#include <memory>
#include <utility>

namespace SYSPAGE_SINGLE
{
using namespace Tovra;

namespace
{
constexpr double openWidth = 45.0;
constexpr double changeWidth = 53.0;
constexpr double boxGap = 5.0;

// One file manager is started at a time; it is let go when the next one is.
bool openInFileManager(const std::string& folder)
{
    static std::unique_ptr<ChildProcess> opener;
    opener = std::make_unique<ChildProcess>();
    return opener->start({"xdg-open", folder}, {});
}
}

std::function<bool(const std::string&)> CSysPagePresetFolderEntrie::openFolder = openInFileManager;

CSysPagePresetFolderEntrie::CSysPagePresetFolderEntrie(const CRect& rect, CQDT_DKS_Single& of, HintSink sink)
    : CSyspageEntry(rect, "Preset Folder", std::move(sink)), effect(of)
{
}

CRect CSysPagePresetFolderEntrie::changeBox() const
{
    const CRect value = valueRect();
    return {value.right - changeWidth, 0.0, value.right, size.getHeight()};
}

CRect CSysPagePresetFolderEntrie::openBox() const
{
    const double right = changeBox().left - boxGap;
    return {right - openWidth, 0.0, right, size.getHeight()};
}

std::string CSysPagePresetFolderEntrie::hintAt(const CPoint& where) const
{
    if (isWithinEdges(openBox(), where))
        return "Click to open Folder";
    return isWithinEdges(changeBox(), where) ? "Click to select new Folder" : "";
}

MouseEventResult CSysPagePresetFolderEntrie::onMouseDown(CPoint& where, const long& buttons)
{
    const Kept<CSysPagePresetFolderEntrie> self(this);
    const CPoint inside(where.x - size.left, where.y - size.top);
    if ((buttons & kButtonLeft) == 0)
        return kMouseUnhandled;
    if (isWithinEdges(changeBox(), inside))
        chooseFolder();
    else if (!isWithinEdges(openBox(), inside))
        return kMouseUnhandled;
    else if (!openFolder(effect.getPresetFolder()))
        Sonvex::openMessageBox(getFrame(), Sonvex::kMessageBoxOk, "Information",
                               "The folder could not be opened: install xdg-utils.", {});
    return kMouseHandledNoMoves;
}

// It takes effect at the next scan. The frame may be gone when the user answers.
void CSysPagePresetFolderEntrie::chooseFolder()
{
    CFileSelector selector(*getFrame(), {});
    selector.setTitle("Preset Folder");
    selector.setStart(effect.getPresetFolder());
    const Kept<CSysPagePresetFolderEntrie> self(this);
    selector.run(FileSelectorOptions::openFolder,
                 [self](const std::vector<std::string>& paths)
                 {
                     if (paths.empty() || self->getFrame() == nullptr)
                         return;
                     self->effect.setPresetFolder(paths.front().c_str());
                     self->setDirty(true);
                     Sonvex::openMessageBox(self->getFrame(), Sonvex::kMessageBoxOk, "Information",
                                            "You need to close and reopen the editor", {});
                 });
}

// The picture

void CSysPagePresetFolderEntrie::drawBox(CDrawContext* context, const CRect& box, const char* text) const
{
    context->setLineWidth(0.5);
    context->setFrameColor(kDisplayColor3);
    context->drawRoundRect(box, 3.0f, kStroked);
    context->drawString(text, box);
}

// The end of a path that is too long.
std::string CSysPagePresetFolderEntrie::shownFolder(CDrawContext* context, double width) const
{
    std::string shown = effect.getPresetFolder();
    if (context->getStringWidth(shown.c_str()) <= width)
        return shown;
    const std::string dots = "\xE2\x80\xA6";
    do
        shown.erase(0, Core::Utf8::advance(shown, 0));
    while (!shown.empty() && context->getStringWidth((dots + shown).c_str()) > width);
    return dots + shown;
}

void CSysPagePresetFolderEntrie::drawBackgroundRect(CDrawContext* context, CRect& update)
{
    CSyspageEntry::drawBackgroundRect(context, update);
    const CRect value = valueRect();
    const double width = openBox().left - boxGap - value.left;
    context->drawString(shownFolder(context, width).c_str(),
                        {value.left, 0.0, value.left + width, size.getHeight()}, true, kTextLeft);
    drawBox(context, openBox(), "Open");
    drawBox(context, changeBox(), "Change");
}
}
