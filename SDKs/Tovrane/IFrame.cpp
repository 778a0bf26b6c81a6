#include "Tovrane/IFrame.h"

#include "Tovrane/CDrawContext.h"
#include "Tovrane/CFrame.h"
#include "Tovrane/CTimerObject.h"
#include "Tovrane/Kept.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"

namespace Tovra
{
static IFrame::Factory platformFactory = nullptr;

void IFrame::setPlatformFactory(Factory factory)
{
    platformFactory = factory;
}

IFrame* IFrame::createPlatformFrame(CFrame* frame, const CRect& size, void* parent)
{
    if (platformFactory != nullptr)
        if (IFrame* made = platformFactory(frame, size, parent))
            return made;
    return new HeadlessFrame(frame, size);
}

void IFrame::paint()
{
    if (frame == nullptr)
        return;
    const Kept<IFrame> self(this);
    const auto context = Kept<CDrawContext>::adopt(new CDrawContext(frame, nullptr, getSystemWindow()));
    frame->draw(context.get());
}

long IFrame::getTicks()
{
    return long(Tovra_getTicks());
}
}
