// SPDX-License-Identifier: GPL-3.0-or-later
// The effect, as every host format sees it: the base class between one effect and its adapters.
//
// An adapter makes the effect (OrbelFactory.h), tells it the sample rate and the largest block, hands it
// audio through processAudio and writes its parameters. The effect talks back through the OrbelCallback
// that it was made with, and knows no host format. Every virtual operation has a harmless default: an
// effect overrides what it has, and adapters rely on the defaults of the rest.
//
// Threads: processAudio and MIDI belong to the audio thread, whose road through a block is BlockRoad's;
// parameter writes, and so parameterChanged, come on any thread; setSampleRate, setBlockSize and reset come
// while audio stands; the rest comes on the window thread. Development builds check it at the seams
// (CORE/ThreadCheck.h): an effect adds a seam of its own by a line of checkAudioThread("Effect::seam") or
// Core::checkWindowThread("Effect::seam").
#pragma once

#include "CORE/Relaxed.h"
#include "CORE/ThreadCheck.h"
#include "Orbel/contract/AudioBusInformation.h"
#include "Orbel/contract/IEditor.h"
#include "Orbel/contract/OrbelCallback.h"
#include "Orbel/contract/OrbelMidiEvent.h"
#include "Orbel/parameters/ParameterChangeListener.h"
#include "Orbel/parameters/TimedValues.h"

#include <memory>
#include <vector>

namespace Orbel
{
class ParameterProperty;

// The grid for the automation of every instance in this process. Written by the window, read by audio.
extern Core::Relaxed<AutomationSyncResolution> gAutomationSync;

class OrbelOS : public ParameterChangeListener
{
public:
    // hostCallback is not owned and may be null: every request to the host is then nothing.
    explicit OrbelOS(OrbelCallback* hostCallback);
    OrbelOS(const OrbelOS&) = delete;
    OrbelOS& operator=(const OrbelOS&) = delete;
    ~OrbelOS() override; // the effect's members are gone by now; the editor goes here

    // [any thread]
    void parameterChanged(ParameterProperty*) override {}

    // Program names: at most 255 characters. False where there is none.
    virtual void setProgramName(const char*) {}
    virtual bool getProgramName(char* text)
    {
        *text = 0;
        return false;
    }
    virtual bool getProgramNameIndexed(int, char*) { return false; }

    // Properties by index, numeric id, automation index and id text; null where there is none. The
    // effect owns them.
    virtual ParameterProperty* getParameterProperty(int) { return nullptr; }
    virtual ParameterProperty* getParameterPropertyByID(int) { return nullptr; }
    virtual ParameterProperty* getParameterProperty_automateable(int index)
    {
        return getParameterProperty(index);
    }
    virtual ParameterProperty* getParameterProperty(const char*) { return nullptr; }
    // The index under which a host automates the property; -1 for null and for one that it can't.
    virtual int getAutomationIndex(ParameterProperty* property);
    virtual int getParameterCount() { return 0; }
    virtual int getParameterCount_automateable() { return getParameterCount(); }

    // [audio thread] One block, or one piece of it. The buses may share memory between input and output.
    virtual void processAudio(AudioBusInformation&) {}

    // [audio stopped] In hertz, and in samples: the largest block to come.
    virtual void setSampleRate(float rate) { sampleRate = rate; }
    virtual float getSampleRate() { return sampleRate; }
    virtual void setBlockSize(long samples) { blockSize = samples; }
    virtual long getBlockSize() const { return blockSize; }

    // [audio thread] A list is completed from its raw bytes, put in order, and given on one by one.
    virtual void processMidiEvent(OrbelMidiEvent*) {}
    virtual void processMidiEventList(std::vector<OrbelMidiEvent>& events);

    // The effect's state: the chunk stays the effect's until the next call. The size is the result.
    virtual long getDataChunk(char**) { return 0; }
    virtual void setDataChunk(char*, long) {}
    virtual long getBankDataChunk(char** chunk) { return getDataChunk(chunk); }
    virtual void setBankDataChunk(char* chunk, long size) { setDataChunk(chunk, size); }
    // [window thread] Whoever gave the effect a chunk from outside (an adapter, a dialog, a tool) calls it
    // afterwards: it ends what a bank's chunk leaves open.
    virtual void finishBankLoad() {}

    virtual void setProgram(int program) { currentProgram = program; }
    virtual int getCurrentProgram() { return currentProgram; }

    // In samples.
    virtual void setOutputLatency(int samples);
    virtual int getOutputLatency() { return outputLatency; }
    virtual long getTailSize() { return 0; }

    virtual void resume() {}
    virtual void suspend() {}
    virtual void reset()
    {
        suspend();
        resume();
    }

    // Gestures of the editor, by automation index, or by property. One that is not automatable reaches no
    // host as a gesture; at its end the host hears that the state has changed.
    virtual void beginEdit(int index)
    {
        if (callback)
            callback->CB_beginEdit(index);
    }
    virtual void endEdit(int index)
    {
        if (callback)
            callback->CB_endEdit(index);
    }
    virtual void performEdit(int index, float normalized)
    {
        if (callback)
            callback->CB_performEdit(index, normalized);
    }
    virtual void beginEdit(ParameterProperty* property);
    virtual void endEdit(ParameterProperty* property);
    virtual void performEdit(ParameterProperty* property);
    virtual void beginSetProgram() {}
    virtual void endSetProgram() {}

    // [any thread]
    virtual void setBypass(bool on);
    virtual bool getBypass() { return bypass; }

    // Counts of stereo buses; the host is told.
    virtual void setNumInputBuses(int buses);
    virtual void setNumOutputBuses(int buses);
    virtual int getNumInputBuses() { return numInputBuses; }
    virtual int getNumOutputBuses() { return numOutputBuses; }

    virtual void giveHostIdleTime()
    {
        if (callback)
            callback->CB_giveHostIdleTime();
    }
    // In beats a minute; 10 without a callback.
    virtual float getCurrentHostTempo() { return callback ? callback->CB_getHostTempo() : 10.0f; }
    // [audio thread] The largest piece that the effect wants of the block that begins (getBlockTempo,
    // getBlockFrames); -1: the block that the host gives.
    virtual long getDesiredProcessBlockSize() { return -1; }
    // "VST2", "VST3", "RTAS", "AU", "AAX", "Orbel", "-", or "NO_CALLBACK"; empty for an unknown format.
    virtual const char* getHostedPluginType() const;

    // [audio thread] A host's write by parameter id and normalised value. False: not taken over, and the
    // framework writes the property itself.
    virtual bool setParameterByAutomation(int, float) { return false; }

    virtual void setAutomationSyncResolution(AutomationSyncResolution resolution)
    {
        gAutomationSync = resolution;
    }
    virtual AutomationSyncResolution getAutomationSyncResoltution() const { return gAutomationSync; }

    // Timed parameter values, which BlockRoad takes through each block of a host: the changes are added, the
    // block is prepared, then processed piece by piece, and the list of values is cleared. What was still
    // waiting then is dropped.
    //
    // [any thread] Adds a value that is due after sampleOffset samples of the block. The audio thread's own
    // goes into its block; another thread's waits for the next block to be prepared, and meanwhile gives way
    // to a newer one of the same property. Null and NaN add nothing. True where the value waits for a grid;
    // on false the adapter may also write the property at once.
    bool addSyncParameterSetEvent(ParameterProperty* property, float normalized, int sampleOffset);
    // [audio thread] The block begins. Takes in what other threads have added.
    void prepareSyncParameterSet(CHostTimeInfo& timeInfo, int frames);
    // [audio thread] Lowers frames to the length of the next piece, and writes what is due at its start.
    void syncSetParameters(int& frames);
    // [any thread] On the audio thread, the end of a block: drops the values of the block, and none that
    // other threads have added since. On another thread: drops those that are waiting for the next block.
    void clearSyncSetEvents() { timedValues.clear(); }

    // [window thread] Null where the effect has none; it stays the effect's.
    IEditor* getEditor() const
    {
        Core::checkWindowThread("OrbelOS::getEditor");
        return editor.get();
    }

protected:
    OrbelCallback* getCallback() const { return callback; }

    // [audio thread] The tempo and the samples of the host's block that was begun last.
    float getBlockTempo() const { return blockTempo; }
    int getBlockFrames() const { return blockFrames; }
    // [audio thread] Reports the seam in development builds, if another thread is processing.
    void checkAudioThread(const char* seam) const { audioSection.checkAudioThread(seam); }

    std::unique_ptr<IEditor> editor; // null until the effect makes one

private:
    friend class BlockRoad;

    void noteBlock(const CHostTimeInfo& timeInfo, int frames);
    long samplesToGrid(const CHostTimeInfo& timeInfo, int frames, AutomationSyncResolution resolution);
    void write(ParameterSetEvent event);

    int outputLatency = 0; // samples
    long blockSize = 0;
    Core::Relaxed<float> sampleRate = 44100.0f;
    int currentProgram = 0;
    OrbelCallback* callback;
    Core::Relaxed<bool> bypass = false;
    int numInputBuses = 1;
    int numOutputBuses = 1;
    float blockTempo = 0.0f;
    int blockFrames = 0;
    TimedValues timedValues;
    Core::AudioSection audioSection;
};
}
