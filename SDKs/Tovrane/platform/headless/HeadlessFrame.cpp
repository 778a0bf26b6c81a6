// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/headless/HeadlessFrame.h"

#include "Tovrane/base/Kept.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/platform/headless/HeadlessTextEdit.h"
#include "Tovrane/views/controls/CMenuItem.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/window/IOptionMenu.h"

#include <cstring>
#include <utility>

namespace Tovra
{
namespace
{
class HeadlessOptionMenu : public IOptionMenu, public FrameOverlay
{
public:
    explicit HeadlessOptionMenu(HeadlessFrame& on) : frame(&on) {}

    void openMenu(IMenu& menu, Done callback) override
    {
        const Kept<HeadlessOptionMenu> alive(this);
        frame->events().releaseAll();
        if (!handle.open(frame->overlays(), *this, OverlayKind::menu))
            return callback({});
        shown = &menu;
        counted.reset(menu.countedObject());
        self.reset(this);
        done = std::move(callback);
    }

    // What a user can't choose is not chosen.
    void answer()
    {
        const Kept<HeadlessOptionMenu> alive(this);
        const auto choose = frame->onMenu;
        const MenuChoice choice = choose ? choose(*shown) : MenuChoice();
        const bool isValid = choice.menu != nullptr && isChoosable(*choice.menu, choice.index);
        finish(isValid ? choice : MenuChoice());
    }

    void overlayLost() override { finish({}); }
    long overlayKeyDown(const TovraKeyCode&, const std::string&) override { return kKeyConsumed; }

private:
    void finish(const MenuChoice& choice)
    {
        if (!done)
            return;
        const Kept<HeadlessOptionMenu> alive(self);
        const Kept<CBaseObject> menu(counted);
        const Done answering = std::exchange(done, nullptr);
        handle.close();
        self.reset();
        counted.reset();
        answering(choice);
    }

    const Kept<HeadlessFrame> frame;
    OverlayHandle handle;
    IMenu* shown = nullptr;
    Kept<CBaseObject> counted;
    Kept<HeadlessOptionMenu> self; // while it is open
    Done done;
};

class HeadlessFileSelector : public IFileSelector, public FrameOverlay
{
public:
    explicit HeadlessFileSelector(HeadlessFrame& on) : frame(&on) {}

    void run(const FileSelectorOptions& options, Done callback) override
    {
        if (!handle.open(frame->overlays(), *this, OverlayKind::panel))
            return callback({});
        wanted = options;
        self.reset(this);
        done = std::move(callback);
    }
    void cancel() override { isCancelled = true; }

    void answer()
    {
        const Kept<HeadlessFileSelector> alive(this);
        const auto choose = frame->onFileSelector;
        finish(choose && !isCancelled ? choose(wanted) : std::vector<std::string>());
    }

    void overlayLost() override { finish({}); }
    long overlayKeyDown(const TovraKeyCode&, const std::string&) override { return kKeyConsumed; }

private:
    void finish(const std::vector<std::string>& paths)
    {
        const Kept<HeadlessFileSelector> alive(self);
        const Done answering = std::exchange(done, nullptr);
        handle.close();
        self.reset();
        if (answering)
            answering(paths);
    }

    const Kept<HeadlessFrame> frame;
    OverlayHandle handle;
    FileSelectorOptions wanted;
    bool isCancelled = false;
    Kept<HeadlessFileSelector> self; // while it is open
    Done done;
};

std::optional<int> answerFor(CFrame& frame, const Message& message)
{
    HeadlessFrame* const on = HeadlessFrame::of(frame);
    const auto choose = on != nullptr ? on->onMessage : nullptr;
    return choose ? choose(message) : std::nullopt;
}
}

void useHeadlessFrames()
{
    MessagePresenter::setAnswerer(&answerFor);
    IFrame::setFallbackFactory([](CFrame* frame, const CRect& size, void*) -> IFrame*
                               { return new HeadlessFrame(frame, size); });
}

HeadlessFrame::HeadlessFrame(CFrame* owner, const CRect& size)
    : IFrame(owner), surface(0.0, 0.0, size.getWidth(), size.getHeight()), windowEvents(owner)
{
    windowEvents.afterEvent = [this] { afterEvent(); };
}

HeadlessFrame* HeadlessFrame::of(CFrame& owner)
{
    return dynamic_cast<HeadlessFrame*>(owner.getOSFrame());
}

bool HeadlessFrame::getGlobalPosition(CPoint&) const
{
    return false;
}

bool HeadlessFrame::setSize(const CRect& size)
{
    if (refusesSize)
        return false;
    surface = CRect(0.0, 0.0, size.getWidth(), size.getHeight());
    return true;
}

bool HeadlessFrame::getSize(CRect& size) const
{
    size = surface;
    return true;
}

bool HeadlessFrame::getCurrentMousePosition(CPoint& position) const
{
    if (!mouseKnown)
        return false;
    position = mouseAt;
    if (frame != nullptr)
        frame->convertWorldToPlugin(position);
    return true;
}

bool HeadlessFrame::getCurrentMouseButtons(long& buttons) const
{
    if (mouseKnown)
        buttons = mouseButtons;
    return mouseKnown;
}

void HeadlessFrame::setMouse(CPoint world, long buttons)
{
    mouseKnown = true;
    mouseAt = world;
    mouseButtons = buttons;
}

bool HeadlessFrame::setMouseCursor(CCursorType type)
{
    currentCursor = type;
    return true;
}

bool HeadlessFrame::invalidRect(const CRect& rect)
{
    invalidated = rect;
    if (frame != nullptr)
        frame->convertPluginToWorld(invalidated);
    ++invalidationCount;
    return true;
}

IOSTextEdit* HeadlessFrame::createPlatformTextEdit(CFrame*, ITextEditCallback* callback, CView*)
{
    return callback != nullptr ? new HeadlessTextEdit(*this, *callback) : nullptr;
}

IOptionMenu* HeadlessFrame::createOptionMenu(CFrame*)
{
    return new HeadlessOptionMenu(*this);
}

IFileSelector* HeadlessFrame::createFileSelector(CFrame*)
{
    return new HeadlessFileSelector(*this);
}

HeadlessTextEdit* HeadlessFrame::textEdit() const
{
    return dynamic_cast<HeadlessTextEdit*>(open.top(OverlayKind::field));
}

long HeadlessFrame::keyDown(const TovraKeyCode& code, const std::string& typed)
{
    const Kept<HeadlessFrame> alive(this);
    if (open.keyDown(code, typed) != kKeyConsumed)
        return windowEvents.keyDown(code);
    afterEvent();
    return kKeyConsumed;
}

std::unique_ptr<IOSBitmap> HeadlessFrame::shownPicture() const
{
    auto shown = std::make_unique<CMACBitmap>();
    IOSBitmap* const picture = frame != nullptr ? frame->getFrameBitmap() : nullptr;
    if (picture == nullptr || !shown->setSize(picture->getWidth(), picture->getHeight()))
        return shown;
    std::memcpy(shown->getPixelPtr(), picture->getPixelPtr(), picture->getTotalBytes());
    if (HeadlessTextEdit* const field = textEdit())
        field->drawOver(*shown);
    return shown;
}

void HeadlessFrame::answerMenus()
{
    const Kept<HeadlessFrame> alive(this);
    while (auto* const menu = dynamic_cast<HeadlessOptionMenu*>(open.top(OverlayKind::menu)))
        menu->answer();
}

void HeadlessFrame::answerPanels()
{
    const Kept<HeadlessFrame> alive(this);
    while (auto* const panel = dynamic_cast<HeadlessFileSelector*>(open.top(OverlayKind::panel)))
        panel->answer();
}

void HeadlessFrame::afterEvent()
{
    const Kept<HeadlessFrame> alive(this);
    if (isReleasing)
        return;
    answerMenus();
    answerPanels();
    if (frame != nullptr)
        frame->doTasks();
}

void HeadlessFrame::releaseMouse()
{
    open.lose(OverlayKind::menu);
    const bool outer = std::exchange(isReleasing, true);
    windowEvents.releaseAll();
    isReleasing = outer;
}

void HeadlessFrame::clearFrame()
{
    windowEvents.disconnect();
    open.shut();
    IFrame::clearFrame();
}
}
