// SPDX-License-Identifier: GPL-3.0-or-later
// What a user's gesture brings: to the control's listener, to the host, and to the read-out.
#pragma once

#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/views/tree/CControlListener.h"
#include "Tovrane/views/tree/RecordingView.h"

// The listener and the editor in one, so that one log has the order of a whole edit.
class Host final : public Tovra::CControlListener, public Tovra::IFrameEditor
{
public:
    void valueChanged(Tovra::CControl*) override { log.push_back("changed"); }
    void controlBeginEdit(Tovra::CControl*) override { log.push_back("listener begins"); }
    void controlEndEdit(Tovra::CControl*) override { log.push_back("listener ends"); }
    void beginEdit(Orbel::ParameterProperty*) override { log.push_back("host begins"); }
    void endEdit(Orbel::ParameterProperty*) override { log.push_back("host ends"); }
    void performEdit(Orbel::ParameterProperty* p) override
    {
        log.push_back("host performs " + std::to_string(p->getCurrentValue()));
    }
    void convertWorldToPlugin(Tovra::CPoint&) const override {}
    void convertPluginToWorld(Tovra::CPoint&) const override {}
    void convertPluginToWorld(Tovra::CRect&) const override {}
    double getEffectTempo() const override { return 120.0; }
    double getSampleRate() const override { return 44100.0; }

    Log log;
};

class ReadOutFrame : public Tovra::CFrame
{
public:
    using Tovra::CFrame::CFrame;
    void setDataReadOutText(const char* text) override { texts.push_back(text); }
    Log texts;
};
