// SPDX-License-Identifier: GPL-3.0-or-later
// A frame without a window: for tests, pictures made on the command line, and editors that were given no
// parent. The picture stays in the frame's memory; what the frame asks of its window is recorded here,
// and events come from events(). Text fields, menus and file panels answer what was put down for them.
//
// A menu or a file panel answers after the event in which it opened, when the views have returned from it;
// or, if it opened outside of an event, after the next one, or when answerMenus or answerPanels is called. A
// message opens at the same moment, and at each idle of the frame.
#pragma once

#include "Tovrane/platform/parts/FrameOverlays.h"
#include "Tovrane/platform/parts/WindowEvents.h"
#include "Tovrane/views/controls/CMessageView.h"
#include "Tovrane/window/IFileSelector.h"
#include "Tovrane/window/IFrame.h"
#include "Tovrane/window/IMenu.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Tovra
{
class HeadlessTextEdit;

// [window thread]  From here on a frame for which no window system answers is a headless one. Called before
// the first CFrame is made.
void useHeadlessFrames();

class HeadlessFrame : public IFrame
{
public:
    HeadlessFrame(CFrame* owner, const CRect& size);

    // The headless frame of a frame; null if a window system made it.
    static HeadlessFrame* of(CFrame& owner);

    bool getGlobalPosition(CPoint& position) const override;
    bool setSize(const CRect& size) override;
    bool getSize(CRect& size) const override;
    bool getCurrentMousePosition(CPoint& position) const override;
    bool getCurrentMouseButtons(long& buttons) const override;
    bool setMouseCursor(CCursorType type) override;
    bool invalidRect(const CRect& rect) override;
    IOSTextEdit* createPlatformTextEdit(CFrame* forFrame, ITextEditCallback* callback, CView* view) override;
    IOptionMenu* createOptionMenu(CFrame* forFrame) override;
    void* getSystemWindow() const override { return nullptr; }
    IFileSelector* createFileSelector(CFrame* forFrame) override;
    double getDesktopScale() const override { return desktopScale; }
    void releaseMouse() override;
    void clearFrame() override;

    // What a user does.
    WindowEvents& events() { return windowEvents; }
    // A key, and the text that it types (UTF-8, empty with a command key): first for the text field that is
    // open, then for the frame. kKeyNotHandled if it would go to the host.
    long keyDown(const TovraKeyCode& code, const std::string& typed);
    long keyUp(const TovraKeyCode& code) { return windowEvents.keyUp(code); }

    // What the frame asked for.
    CCursorType cursor() const { return currentCursor; }
    long invalidations() const { return invalidationCount; }
    const CRect& lastInvalidation() const { return invalidated; } // in world coordinates

    // What a user would see: the frame's picture, with the text field that is open over it. Empty without a
    // frame, or if there is not enough memory.
    std::unique_ptr<IOSBitmap> shownPicture() const;

    // Where the mouse is and what it holds, as the system would tell; without it neither is known.
    void setMouse(CPoint world, long buttons);

    // The text field that is open, the last one of several; null for none.
    HeadlessTextEdit* textEdit() const;
    FrameOverlays& overlays() { return open; }
    // The menu that is open answers, and those that open meanwhile.
    void answerMenus();
    // The same for file panels.
    void answerPanels();

    // Answers of the menus and file panels to come. Without one nothing is chosen.
    std::function<MenuChoice(IMenu&)> onMenu;
    std::function<std::vector<std::string>(const FileSelectorOptions&)> onFileSelector;
    // The answer of a message or question to come, which then is never shown. Without one, or without a
    // result, it is shown and waits for the user's events.
    std::function<std::optional<int>(const Message&)> onMessage;
    // Answers a new size with false.
    bool refusesSize = false;
    // Who changes it has the frame notified with desktopScaleChanged.
    double desktopScale = 1.0;

protected:
    ~HeadlessFrame() override = default;

private:
    void afterEvent();

    CRect surface;
    WindowEvents windowEvents;
    CCursorType currentCursor = kCursorDefault;
    long invalidationCount = 0;
    CRect invalidated;
    bool mouseKnown = false;
    CPoint mouseAt;
    long mouseButtons = 0;
    FrameOverlays open;
    bool isReleasing = false; // the mouse, which is no event of the user's
};
}
