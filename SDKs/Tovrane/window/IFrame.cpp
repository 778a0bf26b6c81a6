#include "Tovrane/window/IFrame.h"

#include "Tovrane/base/CTimerObject.h"

namespace Tovra
{
static IFrame::Factory platformFactory = nullptr;
static IFrame::Factory fallbackFactory = nullptr;

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
    return nullptr;
}

long IFrame::getTicks()
{
    return long(Tovra_getTicks());
}
}
