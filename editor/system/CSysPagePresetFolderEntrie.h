// SPDX-License-Identifier: GPL-3.0-or-later
// The row of the preset folder, with a link that opens it and one that chooses another. [window thread]
#pragma once

#include "editor/system/CSyspageEntry.h"

class CQDT_DKS_Single;

namespace SYSPAGE_SINGLE
{
class CSysPagePresetFolderEntrie : public CSyspageEntry
{
public:
    // The effect outlives the entry.
    CSysPagePresetFolderEntrie(const Tovra::CRect& rect, CQDT_DKS_Single& effect, HintSink sink);

    // Shows a folder to the user; the desktop's file manager unless a test sets another one. False if that
    // cannot be started.
    static std::function<bool(const std::string& folder)> openFolder;

    void drawBackgroundRect(Tovra::CDrawContext* context, Tovra::CRect& update) override;
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint& where, const long& buttons) override;
    const char* getClassName() const override { return "CSysPagePresetFolderEntrie"; }

    // In the entry.
    Tovra::CRect openBox() const;
    Tovra::CRect changeBox() const;

protected:
    std::string hintAt(const Tovra::CPoint& where) const override;

private:
    void drawBox(Tovra::CDrawContext* context, const Tovra::CRect& box, const char* text) const;
    std::string shownFolder(Tovra::CDrawContext* context, double width) const;
    void chooseFolder();

    CQDT_DKS_Single& effect;
};
}
