// SPDX-License-Identifier: GPL-3.0-or-later
// The effect's window. It places every view and keeps the display in step with the tempo, the time base and
// the running audio.
//
// What the audio thread tells is stored as one word each; the next idle of the window takes it over, ahead of
// painting. While the window is open the effect feeds its scope.
#pragma once

#include "CORE/Relaxed.h"
#include "Tovrane/shell/CTovraneEditor.h"
#include "Tovrane/views/scope/CNewScopeRenderer.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "editor/display/CEnvelopeDisplaySingle.h"
#include "effect/instance/CQDT_DKS_Single.h"

namespace SYSPAGE_SINGLE
{
class CSysPageDisplay;
}

namespace Tovra
{
class CToggleDisplay;
}

class QDT_SingleSidechain_Editor : public Tovra::CTovraneEditor,
                                   public IEffectEditor,
                                   private Tovra::IEnvelopeStateSource,
                                   private Tovra::CControlListener
{
public:
    // Units.
    static constexpr int width = 600;
    static constexpr int height = 350;

    // The effect owns the editor.
    explicit QDT_SingleSidechain_Editor(CQDT_DKS_Single& shownEffect);
    ~QDT_SingleSidechain_Editor() override;

    // IEffectEditor
    void setPropertyManager(Orbel::CPropertyManager* manager) override { propertyManager = manager; }
    void setSampleRate(float) override {}
    void setTempo(float beatsPerMinute) override { tempo = beatsPerMinute; }
    void setTimeAdjust(float beats) override { timeAdjust = beats; }
    // The window looks at the scope itself when it is idle.
    void updateScopes(bool, int) override {}
    void updateData(long) override {}
    void getEditorSize(Tovra::CRect& rectangle) override;

    void close() override;
    void idle() override;

    // Null while it is closed.
    CEnvelopeDisplaySingle* getEnvelopeDisplay() const { return envelopeDisplay; }
    Tovra::CToggleDisplay* getToggleDisplay() const { return toggleDisplay; }
    // The system page in place of the display, or the display. Each opening begins with the display; a change
    // of the page ends what the user is dragging, and closes the panel.
    void showSystemPage(bool isOn);
    bool showsSystemPage() const;

protected:
    void prepeareGUI(Tovra::CFrame* made) override;
    Tovra::CFrame* getNewCreateFrame(const Tovra::CRect& rect, void* parent,
                                     Tovra::CTovraneEditor* editor) override;

private:
    void getEnvelopeState(float& fraction, int& segment) override;
    void valueChanged(Tovra::CControl* control) override;
    void placeSnapPoint();
    float shownTempo() const;
    void followTime();

    CQDT_DKS_Single& effect;
    Orbel::CPropertyManager* propertyManager = nullptr;
    CEnvelopeDisplaySingle* envelopeDisplay = nullptr; // these three are the frame's
    Tovra::CToggleDisplay* toggleDisplay = nullptr;
    SYSPAGE_SINGLE::CSysPageDisplay* sysPageDisplay = nullptr;
    Tovra::CNewScopeRenderer scopeRenderer;
    Core::Relaxed<float> tempo = 0.0f; // 0 before the first block
    Core::Relaxed<float> timeAdjust = 1.0f;
    float appliedTempo = 0.0f;
    float appliedTimeAdjust = 0.0f;
};
