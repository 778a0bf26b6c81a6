// SPDX-License-Identifier: GPL-3.0-or-later
// What an effect asks of its host. Each host adapter implements it; the effect gets a pointer at its
// construction, doesn't own it, and must do without one.
//
// Every operation has a harmless default, so that an adapter overrides only what its format can do. A
// bool result is advice: true means that the host took it.
#pragma once

namespace Orbel
{
struct OrbelMidiEvent;

class OrbelCallback
{
public:
    virtual ~OrbelCallback() = default;

    // For the adapter itself, after the effect was made.
    virtual void initCallback() {}
    // [window thread] Asks the host to do its idle work now.
    virtual void CB_giveHostIdleTime() {}
    // [audio thread] Offers a MIDI event to the host.
    virtual bool CB_sendMidiEventToHost(OrbelMidiEvent*) { return false; }

    // [window thread] The host's maker and product as text, in a buffer of 256 bytes.
    virtual bool CB_getHostVendorString(char*) { return false; }
    virtual bool CB_getHostProductString(char*) { return false; }
    virtual int CB_getHostVendorVersion() { return -1; }

    // [window thread] Asks the host to refresh what it shows of the effect.
    virtual bool CB_updateHostDisplay() { return false; }
    // [window thread] The layout of channels or the latency has changed.
    virtual bool CB_ioChanged() { return false; }

    // Tell the host a number of channels: despite the names twice the number of stereo buses.
    virtual bool CB_setNumStereoInputs(int) { return false; }
    virtual bool CB_setNumStereoOutputs(int) { return false; }
    // Asks the host to compensate a latency of so many samples.
    virtual bool CB_setOutputLatency(int) { return false; }

    // [window thread] A gesture on the parameter of an automation index: it begins, it ends, and a new
    // normalised value in between.
    virtual bool CB_beginEdit(int) { return false; }
    virtual bool CB_endEdit(int) { return false; }
    virtual void CB_performEdit(int, float) {}
    // [window thread] The user changed something that no host automates, so that the project is not what was
    // saved.
    virtual void CB_stateChanged() {}

    // The host's tempo in beats a minute.
    virtual float CB_getHostTempo() { return 10.0f; }
    // Which host format this is: 0 none, 1 VST 2, 2 VST 3, 3 RTAS, 4 Audio Unit, 5 AAX, 6 the framework's
    // own.
    virtual int CB_getHostedPluginType() const { return 0; }
    // Asks the host to read the texts of parameters again; the effect passes an empty text.
    virtual void CB_parameterInfoChanged(const char*) {}
};
}
