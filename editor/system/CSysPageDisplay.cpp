// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/system/CSysPageDisplay.h"

#include "Orbel/contract/OrbelFactory.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/views/controls/CParamDisplay.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/tree/CFrame.h"
#include "editor/system/CSysPagePresetFolderEntrie.h"
#include "editor/system/CSyspageEntry.h"
#include "effect/instance/CQDT_DKS_Single.h"
#include "effect/parameters/DKS_Mini.h"

#include <cstring>

namespace SYSPAGE_SINGLE
{
using namespace Tovra;

namespace
{
constexpr double margin = 10.0;
constexpr double rowHeight = 19.0;
constexpr double hintHeight = 40.0;
constexpr double creditHeight = 10.0;
constexpr double creditSize = 8.0;

constexpr struct
{
    const char* description;
    int id;
} settings[] = {{"BPM Scale:", DKS_Mini::kBPMScale},
                {"Clickfilter Strength:", DKS_Mini::kClickFilter},
                {"Host Trigger Shift:", DKS_Mini::kTriggerShift},
                {"Fixed Env. Times:", DKS_Mini::kLinkTimes}};
}

std::vector<std::string> credits(const char* version, const char* hostType)
{
    const std::string bits = sizeof(void*) == 8 ? "64bit" : "32bit";
    return {std::string("Version: QDT Lodex ") + version + " " + bits + " " + hostType,
            "Drawn with AGG and FreeType. GPL-3.0-or-later"};
}

void CSysPageDisplay::CInfo::createObject()
{
    object = propertyManager != nullptr && effect != nullptr ? new CSysPageDisplay(*this) : nullptr;
}

CSysPageDisplay::CSysPageDisplay(const CInfo& info)
    : CViewContainer(info.rect),
      creditLines(credits((*getOrbelPluginListPTR())[0].versionString, info.effect->getHostedPluginType()))
{
    setTransparency(true);
    const HintSink sink = [this](const std::string& text) { showHint(text); };
    const double right = size.getWidth() - margin;
    double top = 4.0 * margin;
    for (const auto& each : settings)
    {
        addView(new CSingleSyspageControl({margin, top, right, top + rowHeight}, each.description,
                                          info.propertyManager->getPropertyByID(each.id), sink));
        top += rowHeight;
    }
    top += rowHeight;
    addView(new CSysPagePresetFolderEntrie({margin, top, right, top + rowHeight}, *info.effect, sink));
    hint = new CTextLabel({margin, hintTop(), right, hintTop() + hintHeight - 2.0 * creditHeight}, "",
                          nullptr, CParamDisplay::kNoBack | CParamDisplay::kNoFrame);
    hint->setFont(kNormalFont, 9);
    hint->setFontColor(kDisplayColor5);
    hint->setHoriAlign(kTextLeft);
    hint->setMouseEnabled(false);
    addView(hint);
}

bool CSysPageDisplay::isTypeOf(const char* name) const
{
    return (name != nullptr && std::strcmp(name, "CSysPageDisplay") == 0) || CViewContainer::isTypeOf(name);
}

double CSysPageDisplay::hintTop() const
{
    return size.getHeight() - margin - 45.0;
}

void CSysPageDisplay::showHint(const std::string& text)
{
    hint->setText(text.c_str());
    if (getFrame() != nullptr)
        getFrame()->setDataReadOutText(text.c_str());
}

void CSysPageDisplay::drawBackgroundRect(CDrawContext* context, CRect&)
{
    const double right = size.getWidth() - margin;
    context->setLineWidth(0.5);
    context->setFrameColor(kDisplayColor5);
    context->line(margin, hintTop(), right, hintTop());
    context->setFont(kNormalFont, creditSize, 0);
    context->setFontColor(kDisplayColor5);
    double bottom = size.getHeight() - margin;
    for (std::size_t i = creditLines.size(); i-- > 0; bottom -= creditHeight)
        context->drawString(creditLines[i].c_str(), {margin, bottom - creditHeight, right, bottom}, true,
                            kTextLeft);
}
}
