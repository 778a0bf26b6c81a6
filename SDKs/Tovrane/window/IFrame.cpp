// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/window/IFrame.h"

#include "Tovrane/base/CTimerObject.h"
#include "Tovrane/draw/CMACBitmap.h"

namespace Tovra
{
namespace
{
IFrame::Factory platformFactory = nullptr;
IFrame::Factory fallbackFactory = nullptr;

// Without a surface, it knows nothing and refuses everything.
class InertFrame : public IFrame
{
public:
    using IFrame::IFrame;

    bool getGlobalPosition(CPoint&) const override { return false; }
    bool setSize(const CRect&) override { return false; }
    bool getSize(CRect&) const override { return false; }
    bool getCurrentMousePosition(CPoint&) const override { return false; }
    bool getCurrentMouseButtons(long&) const override { return false; }
    bool setMouseCursor(CCursorType) override { return false; }
    bool invalidRect(const CRect&) override { return false; }
    IOSTextEdit* createPlatformTextEdit(CFrame*, ITextEditCallback*, CView*) override { return nullptr; }
    IOptionMenu* createOptionMenu(CFrame*) override { return nullptr; }
    void* getSystemWindow() const override { return nullptr; }
    IFileSelector* createFileSelector(CFrame*) override { return nullptr; }
};
}

const char* const IFrame::desktopScaleChanged = "desktopScaleChanged";

std::unique_ptr<IOSBitmap> IFrame::createPicture()
{
    return std::make_unique<CMACBitmap>();
}

void IFrame::setPlatformFactory(Factory factory)
{
    platformFactory = factory;
}

void IFrame::setFallbackFactory(Factory factory)
{
    fallbackFactory = factory;
}

IFrame* IFrame::createPlatformFrame(CFrame* frame, const CRect& size, void* parent)
{
    for (const Factory factory : {platformFactory, fallbackFactory})
        if (factory != nullptr)
            if (IFrame* made = factory(frame, size, parent))
                return made;
    return new InertFrame(frame);
}

long IFrame::getTicks()
{
    return long(Tovra_getTicks());
}
}
