// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/window/QDT_SingleSidechain_Editor.h"

#include "DSP/dsp_Math.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/CParamDisplay.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/controls/Tovra_ActionButton.h"
#include "Tovrane/views/tree/CControl.h"
#include "editor/panel/CToggleDisplay.h"
#include "editor/panel/CToggleDisplayDial.h"
#include "editor/panel/CToggleDisplayOptionmenu.h"
#include "editor/system/CSysPageDisplay.h"
#include "editor/window/Bitmaps.h"
#include "editor/window/Single_CMyFrame.h"
#include "effect/parameters/DKS_Mini.h"
#include "effect/parameters/TimeAdjust.h"

using namespace Tovra;

namespace
{
constexpr int quarterNote = 5;        // of getBeatTime_ms
constexpr int scopeColumns = 553;     // the width of the display inside
constexpr float unknownTempo = 10.0f; // an effect has it before its first block
constexpr float usualTempo = 120.0f;
constexpr long systemPageTag = 'S' << 24 | 'Y' << 16 | 'S' << 8 | 'P';

CColor faint(CColor color, unsigned char alpha)
{
    color.alpha = alpha;
    return color;
}

// The input, the output and the gain.
std::vector<CNewScopeRenderer::layer_style_t> scopeStyles()
{
    std::vector<CNewScopeRenderer::layer_style_t> styles(EffectScope::numLayers);
    const CColor input = faint(kDisplayColor2, 40);
    styles[EffectScope::input].frameColor = input;
    for (CColor& color : styles[EffectScope::input].gradientColors)
        color = input;
    styles[EffectScope::output].frameColor = kDisplayColor3;
    styles[EffectScope::output].gradientColors[0] = kDisplayColor3;
    styles[EffectScope::output].gradientColors[1] = faint(kDisplayColor3, 30);
    styles[EffectScope::output].gradientColors[2] = kDisplayColor3;
    styles[EffectScope::output].lineWidth = 0.4f;
    styles[EffectScope::gain].frameColor = kDisplayEnvShow;
    styles[EffectScope::gain].lineWidth = 2.0f;
    styles[EffectScope::input].drawStyle = styles[EffectScope::output].drawStyle = kFilledAndStroked;
    styles[EffectScope::gain].drawStyle = kStroked;
    return styles;
}
}

QDT_SingleSidechain_Editor::QDT_SingleSidechain_Editor(CQDT_DKS_Single& shownEffect)
    : CTovraneEditor(&shownEffect), effect(shownEffect)
{
    setSize(width, height);
}

QDT_SingleSidechain_Editor::~QDT_SingleSidechain_Editor()
{
    QDT_SingleSidechain_Editor::close();
}

void QDT_SingleSidechain_Editor::getEditorSize(CRect& rectangle)
{
    double pixelsWide = 0.0, pixelsHigh = 0.0;
    getSize(pixelsWide, pixelsHigh);
    rectangle = CRect(0.0, 0.0, pixelsWide, pixelsHigh);
}

CFrame* QDT_SingleSidechain_Editor::getNewCreateFrame(const CRect& rect, void* parent, CTovraneEditor* editor)
{
    return new Single_CMyFrame(rect, parent, editor);
}

// The display reads the scope to the last.
void QDT_SingleSidechain_Editor::close()
{
    effect.getScope().show(false);
    envelopeDisplay = nullptr;
    toggleDisplay = nullptr;
    sysPageDisplay = nullptr;
    CTovraneEditor::close();
}

void QDT_SingleSidechain_Editor::prepeareGUI(CFrame* made)
{
    timeAdjust = effect.getTimeAdjust();
    appliedTempo = appliedTimeAdjust = 0.0f;
    effect.getScope().show(true);
    scopeRenderer.initialize(&effect.getScope().data(), scopeColumns, scopeStyles());
    made->setBackground(bitmaps().BackBitmap.get());

    CEnvelopeDisplaySingle::CInfo display;
    display.kind = kindOwn;
    display.rect = CRect(9.0, 48.0, 583.0, 306.0);
    display.propertyManager = propertyManager;
    display.scopeRenderer = &scopeRenderer;
    display.stateSource = this;
    addGuiObject(&display, nullptr);
    envelopeDisplay = static_cast<CEnvelopeDisplaySingle*>(display.object);
    envelopeDisplay->setFillGradient(true, false, true, 0.5f);

    SYSPAGE_SINGLE::CSysPageDisplay::CInfo system;
    system.kind = kindOwn;
    system.rect = CRect(9.0, 48.0, 591.0, 306.0);
    system.propertyManager = propertyManager;
    system.effect = &effect;
    addGuiObject(&system, nullptr);
    sysPageDisplay = static_cast<SYSPAGE_SINGLE::CSysPageDisplay*>(system.object);
    sysPageDisplay->setVisible(false);

    made->addView(new Tovra_ActionButton({558.0, 308.0, 599.0, 350.0}, this, systemPageTag,
                                         bitmaps().button_syspage.get(), Tovra_ActionButton::kToggle, false,
                                         1.0f));

    CTextLabelInfo name;
    name.kind = kindNameDisplay;
    name.rect = CRect(57.0, 14.0, 248.0, 33.0);
    name.attachedProperty = &effect.getPresetNameProperty();
    name.font = kNormalFont;
    name.fontSize = 14;
    name.textColor = kDisplayTextColor;
    name.style = CParamDisplay::kNoBack | CParamDisplay::kNoFrame;
    name.mouseEnabled = false;
    addGuiObject(&name, nullptr);

    auto* const readOut = new CTextLabel({170.0, 319.0, 377.0, 338.0}, "", nullptr,
                                         CParamDisplay::kNoBack | CParamDisplay::kNoFrame);
    readOut->setFont(kNormalFont, 14);
    readOut->setTxtFace(kBoldFace);
    readOut->setFontColor(kDisplayTextColor);
    readOut->setMouseEnabled(false);
    made->addView(readOut);
    toggleDisplay = new CToggleDisplay({0.0, 0.0, 120.0, 250.0}, {577.0, 52.0}, {475.0, 52.0},
                                       *propertyManager, this, bitmaps().toggle_display.get());
    made->addView(toggleDisplay);

    auto* const frameOfWindow = static_cast<Single_CMyFrame*>(made);
    frameOfWindow->setReadOutLabel(readOut);
    frameOfWindow->setToggleDisplay(toggleDisplay);
    placeSnapPoint();
    followTime();
}

void QDT_SingleSidechain_Editor::showSystemPage(bool isOn)
{
    if (envelopeDisplay == nullptr)
        return;
    toggleDisplay->shut();
    toggleDisplay->setVisible(!isOn);
    envelopeDisplay->setVisible(!isOn);
    sysPageDisplay->setVisible(isOn);
}

bool QDT_SingleSidechain_Editor::showsSystemPage() const
{
    return sysPageDisplay != nullptr && sysPageDisplay->isVisible();
}

// The window before it paints

void QDT_SingleSidechain_Editor::idle()
{
    if (envelopeDisplay != nullptr)
    {
        followTime();
        envelopeDisplay->followAudio();
        placeSnapPoint();
        toggleDisplay->coverDirt();
    }
    CTovraneEditor::idle();
}

float QDT_SingleSidechain_Editor::shownTempo() const
{
    if (tempo > 0.0f)
        return tempo;
    const float host = effect.getCurrentHostTempo();
    return host > unknownTempo ? host : usualTempo;
}

void QDT_SingleSidechain_Editor::followTime()
{
    const float beats = timeAdjust, now = shownTempo();
    if (now == appliedTempo && beats == appliedTimeAdjust)
        return;
    appliedTempo = now;
    appliedTimeAdjust = beats;
    effect.getScope().data().setVisibleTime(2.0f * DSP::Math::getBeatTime_ms(now, quarterNote) * beats);
    envelopeDisplay->setTempo(now);
    envelopeDisplay->setTimeAdjust(beats);
    toggleDisplay->setTimeAdjust(envelopeDisplay->getTimeAdjustIndex(), beats);
}

// The release at which the three times fill a beat.
void QDT_SingleSidechain_Editor::placeSnapPoint()
{
    constexpr float beat = 468.75f; // milliseconds at 128 beats a minute
    const auto valueOf = [this](int id) { return propertyManager->getPropertyByID(id)->getCurrentValue(); };
    const Orbel::ParameterProperty& release = *propertyManager->getPropertyByID(DKS_Mini::kReleaseTime);
    const float rest = beat - valueOf(DKS_Mini::kAttackTime) - valueOf(DKS_Mini::kHoldTime);
    CToggleDisplayDial& dial = *toggleDisplay->getReleaseDial();
    dial.setSnapPoint((rest - release.getMin()) / (release.getMax() - release.getMin()));
    dial.setSnapSize(0.1f);
    dial.setUseSnap(true);
}

// The gear was turned, or a time base was chosen.
void QDT_SingleSidechain_Editor::valueChanged(CControl* control)
{
    if (control->getTag() == systemPageTag)
        return showSystemPage(control->getValue() > 0.0f);
    const int index = int(control->getValue());
    if (control->getTag() != CToggleDisplayOptionmenu::menuTag || index < 0 || index >= gNumTimeAdjustEntries)
        return;
    effect.setTimeAdjust(gTimeAdjustMultiplier[index]);
    timeAdjust = gTimeAdjustMultiplier[index];
}

// From the segments of the cycle to the points at which they end.
void QDT_SingleSidechain_Editor::getEnvelopeState(float& fraction, int& segment)
{
    constexpr int pointOfSegment[] = {2, 3, 5};
    const EffectScope::EnvelopePlace place = effect.getScope().getEnvelopePlace();
    fraction = place.fraction;
    segment = place.segment >= 0 && place.segment < 3 ? pointOfSegment[place.segment] : -1;
}
