// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/shell/CTovraneEditor.h"

#include "Orbel/contract/OrbelOS.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/shell/IdleList.h"
#include "Tovrane/views/controls/Tovra_ParamDisplay.h"
#include "Tovrane/window/IFrame.h"
#include "Tovrane/window/MouseEvents.h"

#include <algorithm>
#include <cmath>

namespace Tovra
{
CTovraneEditor::CTovraneEditor(Orbel::OrbelOS* shownEffect) : effect(shownEffect) {}

CTovraneEditor::~CTovraneEditor()
{
    CTovraneEditor::close();
}

// The window

CFrame* CTovraneEditor::getNewCreateFrame(const CRect& rect, void* parent, CTovraneEditor* editor)
{
    return new CFrame(rect, parent, editor);
}

bool CTovraneEditor::open(void* parent)
{
    close();
    openScale = WindowScale::expected(hostScale);
    frame = Kept<CFrame>::adopt(getNewCreateFrame(size, parent, this));
    if (parent != nullptr && frame->getOSFrame()->getSystemWindow() == nullptr)
    {
        CTovraneEditor::close();
        return false;
    }
    windowScale.emplace(
        *frame.get(), [this](double pixelsPerUnit) { applyScale(pixelsPerUnit); }, hostScale);
    prepeareGUI(frame.get());
    idle(); // so that there is a picture when the window appears
    Orbel::idleList().add(*this);
    return true;
}

// What ends a gesture still reaches the host, and may close the editor once more.
void CTovraneEditor::close()
{
    const Core::Threads::SectionGuard guard(editorLock);
    Orbel::idleList().remove(*this);
    windowScale.reset();
    const Kept<CFrame> old = frame;
    frame.reset();
    if (old)
        old->close();
}

double CTovraneEditor::scale() const
{
    return frame ? openScale : WindowScale::expected(hostScale);
}

void CTovraneEditor::getSize(double& width, double& height) const
{
    width = CFrame::wholePixels(size.getWidth(), scale());
    height = CFrame::wholePixels(size.getHeight(), scale());
}

// The host's window follows.
bool CTovraneEditor::resizeWindow()
{
    double width = 0.0, height = 0.0;
    getSize(width, height);
    return !window || window->resize(width, height);
}

bool CTovraneEditor::setSize(int width, int height)
{
    size = CRect(0.0, 0.0, width, height);
    if (!frame)
        return false;
    frame->setViewSize(size);
    return resizeWindow();
}

void CTovraneEditor::setContentScale(double pixelsPerUnit)
{
    hostScale = std::isfinite(pixelsPerUnit) && pixelsPerUnit > 0.0 ? pixelsPerUnit : 0.0;
    if (windowScale)
        windowScale->setHostScale(hostScale);
}

void CTovraneEditor::applyScale(double pixelsPerUnit)
{
    openScale = pixelsPerUnit;
    frame->setScale(pixelsPerUnit);
    resizeWindow();
}

// Painting

void CTovraneEditor::idle()
{
    if (!editorLock.tryEnter())
        return;
    if (const Kept<CFrame> shown = frame)
        shown->idle();
    onIdle();
    editorLock.leave();
}

void CTovraneEditor::draw(const CRect* part)
{
    const Kept<CFrame> shown = frame;
    if (!shown)
        return;
    CRect rect = size;
    if (part != nullptr)
        rect = CRect(std::min(part->left, part->right), std::min(part->top, part->bottom),
                     std::max(part->left, part->right), std::max(part->top, part->bottom));
    const auto context = Kept<CDrawContext>::adopt(shown->createDrawContext());
    shown->drawRect(context.get(), rect);
    context->blit(nullptr);
}

// Input that comes through the host

// The platform tells the position in units already; a window that does not know it is where its last event
// was.
bool CTovraneEditor::onWheel(float distance)
{
    const Kept<CFrame> shown = frame;
    if (!shown)
        return false;
    CPoint where = shown->getLastMousePosition();
    CPoint now;
    if (shown->getCurrentMouseLocation(now))
        where = now;
    return shown->onWheel(where, distance, shown->getCurrentMouseButtons());
}

bool CTovraneEditor::onKeyDown(const Core::KeyCode& key)
{
    const Kept<CFrame> shown = frame;
    TovraKeyCode code = key;
    return shown && shown->onKeyDown(code) == kKeyConsumed;
}

bool CTovraneEditor::onKeyUp(const Core::KeyCode& key)
{
    const Kept<CFrame> shown = frame;
    TovraKeyCode code = key;
    return shown && shown->onKeyUp(code) == kKeyConsumed;
}

// What the frame asks for

void CTovraneEditor::convertWorldToPlugin(CPoint& point) const
{
    point.x /= scale();
    point.y /= scale();
}

void CTovraneEditor::convertPluginToWorld(CPoint& point) const
{
    point.x *= scale();
    point.y *= scale();
}

void CTovraneEditor::convertPluginToWorld(CRect& rect) const
{
    const double pixels = scale();
    rect = CRect(rect.left * pixels, rect.top * pixels, rect.right * pixels, rect.bottom * pixels);
}

double CTovraneEditor::getEffectTempo() const
{
    return effect ? double(effect->getCurrentHostTempo()) : -1.0;
}

double CTovraneEditor::getSampleRate() const
{
    constexpr double usual = 44100.0;
    return effect ? double(effect->getSampleRate()) : usual;
}

void CTovraneEditor::beginEdit(Orbel::ParameterProperty* property)
{
    if (effect)
        effect->beginEdit(property);
}

void CTovraneEditor::endEdit(Orbel::ParameterProperty* property)
{
    if (effect)
        effect->endEdit(property);
}

void CTovraneEditor::performEdit(Orbel::ParameterProperty* property)
{
    if (effect)
        effect->performEdit(property);
}

// The registry

static void createObject(Tovra_ObjectConstructorInfoBase& info)
{
    using Editor = CTovraneEditor;
    info.object = nullptr;
    if (info.kind == Editor::kindTextEdit || info.kind == Editor::kindOwn)
        return info.createObject();
    const bool isDisplay =
        info.kind >= Editor::kindNameDisplay && info.kind <= Editor::kindLastDisplay && info.kind != 102;
    const auto* const label = dynamic_cast<const CTextLabelInfo*>(&info);
    if (isDisplay && label != nullptr)
        info.object = new Tovra_ParamDisplay(*label);
}

void CTovraneEditor::addGuiObject(Tovra_ObjectConstructorInfoBase* info, CViewContainer* container)
{
    if (info == nullptr)
        return;
    if (info->frame == nullptr)
        info->frame = frame.get();
    createObject(*info);
    CViewContainer* const target = container != nullptr ? container : frame.get();
    if (info->object == nullptr || (target != nullptr && target->addView(info->object)))
        return;
    info->object->forget();
    info->object = nullptr;
}
}
