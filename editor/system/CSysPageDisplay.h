// SPDX-License-Identifier: GPL-3.0-or-later
// The system page, which stands in the place of the display: four settings, the preset folder, a hint about
// what is under the mouse, and the credits. [window thread]
#pragma once

#include "Orbel/parameters/CPropertyManager.h"
#include "Tovrane/views/tree/CViewContainer.h"
#include "Tovrane/views/tree/Tovra_ObjectConstructorInfoBase.h"

#include <string>
#include <vector>

class CQDT_DKS_Single;

namespace Tovra
{
class CTextLabel;
}

namespace SYSPAGE_SINGLE
{
// The lines of the credits; the first one says the version and the host's format.
std::vector<std::string> credits(const char* version, const char* hostType);

class CSysPageDisplay : public Tovra::CViewContainer
{
public:
    struct CInfo : Tovra::Tovra_ObjectConstructorInfoBase
    {
        void createObject() override;
        Orbel::CPropertyManager* propertyManager = nullptr;
        CQDT_DKS_Single* effect = nullptr;
    };

    explicit CSysPageDisplay(const CInfo& info);
    CSysPageDisplay(const CSysPageDisplay&) = delete;

    void drawBackgroundRect(Tovra::CDrawContext* context, Tovra::CRect& update) override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "CSysPageDisplay"; }

private:
    void showHint(const std::string& text);
    double hintTop() const;

    const std::vector<std::string> creditLines;
    Tovra::CTextLabel* hint = nullptr; // a child
};
}
