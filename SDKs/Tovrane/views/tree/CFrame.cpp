// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/tree/CFrame.h"

#include "CORE/Truncate.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/views/tree/IFrameEditor.h"
#include "Tovrane/window/IFileSelector.h"
#include "Tovrane/window/IFrame.h"
#include "Tovrane/window/IOptionMenu.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace Tovra
{
static double editorScale(const IFrameEditor* editor)
{
    CPoint unit(1.0, 1.0);
    if (editor != nullptr)
        editor->convertPluginToWorld(unit);
    return unit.x;
}

CFrame::CFrame(const CRect& rect, void* window, IFrameEditor* owner)
    : CViewContainer(rect), systemWindow(window), editor(owner), renderer(std::make_unique<PelmoAGG>())
{
    setAttachedFlag(true);
    CView::setFrame(this);
    renderer->scale(editorScale(owner));
    platformFrame = Kept<IFrame>::adopt(IFrame::createPlatformFrame(this, windowSize(size), systemWindow));
    frameBitmap = platformFrame->createPicture();
    fitPicture();
    setDirtyFlag(true);
}

// The extra reference keeps the count from reaching 0 a second time while the views drop theirs.
CFrame::~CFrame()
{
    CBaseObject::remember();
    CFrame::setModalView(nullptr);
    platformFrame->setMouseCursor(kCursorDefault);
    platformFrame->clearFrame();
    CFrame::removeAll(true);
    platformFrame.reset();
    CView::setFrame(nullptr);
}

void CFrame::close()
{
    const Kept<CFrame> self(this);
    platformFrame->releaseMouse();
    tasks.close();
    setModalView(nullptr);
    removeAll(true);
    platformFrame->clearFrame();
}

bool CFrame::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CFrame") == 0) || CViewContainer::isTypeOf(name);
}

// The window

long CFrame::getTicks() const
{
    return IFrame::getTicks();
}

bool CFrame::setPosition(double, double)
{
    return false;
}

bool CFrame::getPosition(double& x, double& y) const
{
    CPoint position;
    const bool known = platformFrame->getGlobalPosition(position);
    x = known ? position.x : 0.0;
    y = known ? position.y : 0.0;
    return known;
}

bool CFrame::setSize(double width, double height)
{
    const CRect wanted(size.left, size.top, size.left + width, size.top + height);
    const bool done = platformFrame->setSize(windowSize(wanted));
    CViewContainer::setViewSize(size, true);
    return done;
}

void CFrame::setViewSize(const CRect& rect, bool invalidate)
{
    setSize(rect.getWidth(), rect.getHeight());
    CViewContainer::setViewSize(rect, invalidate);
    fitPicture();
}

double CFrame::wholePixels(double units, double scale)
{
    constexpr double roundingError = 1e-6;
    return scale == 1.0 ? units : std::ceil(units * scale - roundingError);
}

// The top left stays what it is: no window system uses it.
CRect CFrame::windowSize(const CRect& rect) const
{
    const double scale = getScale();
    return {rect.left, rect.top, rect.left + wholePixels(rect.getWidth(), scale),
            rect.top + wholePixels(rect.getHeight(), scale)};
}

void CFrame::setScale(double pixelsPerUnit)
{
    constexpr double smallest = 0.25;
    constexpr double largest = 8.0;
    if (!(pixelsPerUnit >= smallest && pixelsPerUnit <= largest) || pixelsPerUnit == getScale())
        return;
    {
        const Core::Threads::SectionGuard guard(drawLock);
        renderer->scale(pixelsPerUnit);
    }
    setSize(size.getWidth(), size.getHeight());
    fitPicture();
    setDirtyFlag(true);
}

double CFrame::getScale() const
{
    return renderer->scale();
}

static unsigned pictureSide(double length, double scale)
{
    return Core::truncate<unsigned>(
        std::min(std::max(CFrame::wholePixels(length, scale), 1.0), CFrame::maxPictureSide));
}

// Replaces the picture if it should have another size.
void CFrame::fitPicture()
{
    const unsigned width = pictureSide(size.getWidth(), getScale());
    const unsigned height = pictureSide(size.getHeight(), getScale());
    if (frameBitmap->getWidth() == width && frameBitmap->getHeight() == height)
        return;
    const Core::Threads::SectionGuard guard(drawLock);
    frameBitmap->setSize(width, height);
    renderer->attach(frameBitmap->getPixelPtr(), frameBitmap->getWidth(), frameBitmap->getHeight(),
                     frameBitmap->getRowBytes());
    setDirtyFlag(true);
}

bool CFrame::getSize(CRect* rect) const
{
    return rect != nullptr && platformFrame->getSize(*rect);
}

bool CFrame::getSize(CRect& rect) const
{
    return platformFrame->getSize(rect);
}

bool CFrame::getCurrentMouseLocation(CPoint& where) const
{
    return platformFrame->getCurrentMousePosition(where);
}

long CFrame::getCurrentMouseButtons() const
{
    long buttons = 0;
    return platformFrame->getCurrentMouseButtons(buttons) ? buttons : lastMouseButtons;
}

bool CFrame::setCursor(CCursorType type)
{
    return platformFrame->setMouseCursor(type);
}

IOptionMenu* CFrame::createOptionMenu()
{
    return platformFrame->createOptionMenu(this);
}

IOSTextEdit* CFrame::createOSTextEdit(ITextEditCallback* callback, CView* view)
{
    return platformFrame->createPlatformTextEdit(this, callback, view);
}

IFileSelector* CFrame::createFileSelector()
{
    return platformFrame->createFileSelector(this);
}

CRect CFrame::wholePicture() const
{
    const double scale = getScale();
    CRect all = size;
    all.roundOut();
    if (scale == 1.0)
        return all;
    return {all.left, all.top, all.left + frameBitmap->getWidth() / scale,
            all.top + frameBitmap->getHeight() / scale};
}

long CFrame::notify(CBaseObject* sender, const char* message)
{
    if (message != IFrame::desktopScaleChanged)
        return CViewContainer::notify(sender, message);
    const Kept<CFrame> self(this);
    if (onDesktopScale)
        onDesktopScale();
    return 1;
}

CDrawContext* CFrame::createDrawContext()
{
    return new CDrawContext({renderer.get(), frameBitmap.get(), wholePicture()},
                            platformFrame->getSystemWindow());
}

// The editor

void CFrame::beginEdit(Orbel::ParameterProperty* property)
{
    if (editor != nullptr && property != nullptr)
        editor->beginEdit(property);
}

void CFrame::endEdit(Orbel::ParameterProperty* property)
{
    if (editor != nullptr && property != nullptr)
        editor->endEdit(property);
}

void CFrame::performEdit(Orbel::ParameterProperty* property)
{
    if (editor != nullptr && property != nullptr)
        editor->performEdit(property);
}

double CFrame::getEffectTempo() const
{
    return editor != nullptr ? editor->getEffectTempo() : -1.0;
}

void CFrame::convertWorldToPlugin(CPoint& point) const
{
    if (editor != nullptr)
        return editor->convertWorldToPlugin(point);
    point = CPoint(point.x / getScale(), point.y / getScale());
}

void CFrame::convertPluginToWorld(CPoint& point) const
{
    if (editor != nullptr)
        return editor->convertPluginToWorld(point);
    point = CPoint(point.x * getScale(), point.y * getScale());
}

void CFrame::convertPluginToWorld(CRect& rect) const
{
    if (editor != nullptr)
        return editor->convertPluginToWorld(rect);
    const double scale = getScale();
    rect = CRect(rect.left * scale, rect.top * scale, rect.right * scale, rect.bottom * scale);
}

// The tree

bool CFrame::addView(CView* view)
{
    const bool added = CViewContainer::addView(view);
    bringViewToFront(topView);
    return added;
}

bool CFrame::addView(CView* view, const CRect& area, bool takesMouse)
{
    const bool added = CViewContainer::addView(view, area, takesMouse);
    bringViewToFront(topView);
    return added;
}

bool CFrame::addView(CView* view, CView* before)
{
    const bool added = CViewContainer::addView(view, before);
    bringViewToFront(topView);
    return added;
}

bool CFrame::removeView(CView* view, const bool& withForget)
{
    const Kept<CFrame> self(this);
    if (modalView.get() == view)
        modalView.reset();
    const bool wasChild = CViewContainer::removeView(view, withForget);
    dropTopView();
    return wasChild;
}

bool CFrame::removeAll(const bool& withForget)
{
    modalView.reset();
    focusView.reset();
    setMouseOverChild(nullptr);
    topView = nullptr;
    return CViewContainer::removeAll(withForget);
}

// A pointer to a view that is no child any more may be another view's soon.
void CFrame::dropTopView()
{
    if (!isChild(topView))
        topView = nullptr;
}

void CFrame::onViewRemoved(CView* view)
{
    if (getMouseOverChild() == view)
        setMouseOverChild(nullptr);
    if (focusView.get() == view)
        focusView.reset();
    if (topView == view)
        topView = nullptr;
}

bool CFrame::setModalView(CView* view)
{
    if (view == nullptr)
    {
        if (isChild(modalView.get()))
            removeView(modalView.get(), isModalViewOwned);
        modalView.reset();
        return true;
    }
    if (modalView || !addView(view))
        return false;
    modalView.reset(view);
    isModalViewOwned = false;
    return true;
}

bool CFrame::adoptModalView(CView* view)
{
    if (view == nullptr || !setModalView(view))
        return false;
    return isModalViewOwned = true;
}

void CFrame::localRectToFrameRect(CView* view, CRect& rect) const
{
    for (const CView* above = view->getParentView(); above != nullptr && above != this;
         above = above->getParentView())
        rect.offset(std::floor(above->getViewSize().left), std::floor(above->getViewSize().top));
}
}
