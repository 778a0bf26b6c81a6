// SPDX-License-Identifier: GPL-3.0-or-later
// The product's envelope display: the six parameters of the duck as four points over the scope, on a grid of
// note values. The display shows two cycles, whatever the tempo and the time base are: a stored time of 937.5
// ms, which is two quarter notes at 128 beats a minute, is its whole width. Full gain is at the top.
//
// [window thread]; setTempo and parameterChanged come on any thread.
#pragma once

#include "Orbel/parameters/CPropertyManager.h"
#include "Tovrane/views/envelope/Tovra_EnvelopeDisplay.h"
#include "Tovrane/views/scope/CNewScopeRenderer.h"

class CEnvelopeDisplaySingle : public Tovra::Tovra_EnvelopeDisplay
{
public:
    struct CInfo : Tovra::Tovra_EnvelopeDisplay::CInfo
    {
        CInfo() { tempoSync = true; }
        void createObject() override;
        Orbel::CPropertyManager* propertyManager = nullptr; // the ids are those of DKS_Mini
        const float* timeAdjust = nullptr;                  // beats from trigger to trigger
        Tovra::CNewScopeRenderer* scopeRenderer = nullptr;  // not owned, may be null
    };

    explicit CEnvelopeDisplaySingle(const CInfo& info);

    // The interval between triggers in beats, which the grid is labelled by.
    void setTimeAdjust(float beats);
    // Index of the interval among gTimeAdjustMultiplier, -1 for another one.
    int getTimeAdjustIndex() const { return timeAdjustIndex; }
    // Marks the columns of the scope that changed, and the dot, as dirty. At each idle.
    void followAudio();

    void setDisplayTime(float) override;
    float getDisplayTime() const override;
    double convertTimeToX(const Tovra::CEnvelopePoint* point, float time) const override;
    float convertXToTime(const Tovra::CEnvelopePoint* point, double x) const override;
    float convertYToLevel(const Tovra::CEnvelopePoint* point, double y) const override;
    double convertLevelToY(const Tovra::CEnvelopePoint* point, float level) const override;
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void draw(Tovra::CDrawContext* context) override;
    bool isTypeOf(const char* name) const override;
    const char* getClassName() const override { return "CEnvelopeDisplaySingle"; }

protected:
    void preCalculateDraw(int what) override;
    void checkSnapTime(const Tovra::CEnvelopePoint* point, float& time) override;
    std::string readoutOf(const Tovra::CEnvelopePoint* point) const override;
    void drawGridX(Tovra::CDrawContext* context, const Tovra::CRect& rect) override;
    void drawGridY(Tovra::CDrawContext* context, const Tovra::CRect& rect) override;

private:
    void addPoints(const Orbel::CPropertyManager& manager);
    std::string labelOf(int quarters) const;

    Tovra::CNewScopeRenderer* const scopeRenderer;
    Core::Relaxed<int> beatDivision = 5; // the end point snaps to this note value: a quarter or an eighth
    float timeAdjust = 1.0f;
    int timeAdjustIndex = 2;
};
