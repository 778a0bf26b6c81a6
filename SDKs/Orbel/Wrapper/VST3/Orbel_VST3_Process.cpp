// The adapter's road of one block. [audio thread] throughout.
#include "CORE/Truncate.h"
#include "Orbel/Wrapper/VST3/OrbelVST3Parameter.h"
#include "Orbel/Wrapper/VST3/Orbel_VST3.h"
#include "Orbel/contract/TransportHelpers.h"
#include "pluginterfaces/vst/ivstevents.h"
#include "pluginterfaces/vst/ivstprocesscontext.h"

#include <algorithm>
#include <cmath>

namespace Orbel
{
using namespace Steinberg;
using namespace Steinberg::Vst;

namespace
{
constexpr int mostBuses = AudioBusInformation::maximumBuses;
constexpr double tempoWithoutHost = 120.0;

// One channel pointer for each side of each stereo bus.
struct ChannelTables
{
    float* inputs[2 * mostBuses];
    float* outputs[2 * mostBuses];
};

float* channelOf(const AudioBusBuffers& bus, int channel)
{
    return bus.channelBuffers32 && channel < bus.numChannels ? bus.channelBuffers32[channel] : nullptr;
}

// A mono bus is heard on both sides: the right one is a copy, since the effect may write to the left before
// it reads the right. From the last bus to the first, so that the main one has the copy for itself.
void wireInputs(const ProcessData& data, float* silence, float** table)
{
    for (int i = std::min<int>(data.numInputs, mostBuses) - 1; i >= 0; --i)
    {
        float* const left = channelOf(data.inputs[i], 0);
        float* const right = channelOf(data.inputs[i], 1);
        if (left && data.inputs[i].numChannels == 1)
            std::copy_n(left, data.numSamples, silence);
        else if (!left || !right)
            std::fill_n(silence, data.numSamples, 0.0f);
        table[2 * i] = left ? left : silence;
        table[2 * i + 1] = right ? right : silence;
    }
}

void wireOutputs(const ProcessData& data, float* silence, float** table)
{
    for (int i = 0; i < std::min<int>(data.numOutputs, mostBuses); ++i)
    {
        float* const left = channelOf(data.outputs[i], 0);
        float* const right = channelOf(data.outputs[i], 1);
        table[2 * i] = left ? left : silence;
        table[2 * i + 1] = right ? right : silence;
        data.outputs[i].silenceFlags = 0; // what there is to hear is not looked at
    }
}

bool has(const ProcessContext& context, ProcessContext::StatesAndFlags flag)
{
    return (context.state & flag) != 0;
}

CHostTimeInfo timeOf(const ProcessContext* context, double sampleRate)
{
    CHostTimeInfo time;
    double tempo = tempoWithoutHost;
    if (context)
    {
        time.samplePosition = double(context->projectTimeSamples);
        time.ppqPosition = context->projectTimeMusic;
        time.barStartPosition = context->barPositionMusic;
        time.playing = has(*context, ProcessContext::kPlaying);
        time.cycleActive = has(*context, ProcessContext::kCycleActive);
        time.recording = has(*context, ProcessContext::kRecording);
        tempo = context->tempo;
    }
    time.tempo = float(tempo);
    time.transportChanged = time.automationWriting = time.automationReading = true;
    time.samplesToNextBeat = Helpers::getSamplesToNextBeat(time.tempo, time.ppqPosition, sampleRate);
    return time;
}

double beatsPerSample(const CHostTimeInfo& time, double sampleRate)
{
    return 1.0 / (60.0 / double(time.tempo) * sampleRate);
}

// The longest piece of a block: one below two of the desired size stays whole.
int longestPiece(long desired, int frames)
{
    return desired <= 0 || frames < 2 * desired ? frames : int(desired);
}
}

tresult PLUGIN_API Orbel_VST3::process(ProcessData& data)
{
    if (!effect)
        return kNotInitialized;
    if (data.inputParameterChanges)
        takeParameterChanges(*data.inputParameterChanges);
    const bool noInputs = data.numInputs <= 0 || !data.inputs;
    const bool noOutputs = data.numOutputs <= 0 || !data.outputs;
    if (noOutputs || (noInputs && description.numStereoInputs > 0))
    {
        landParameterChanges();
        return kResultOk;
    }
    if (data.inputEvents)
        takeEvents(*data.inputEvents);
    processMidi();
    if (data.symbolicSampleSize != kSample32 || size_t(std::max(data.numSamples, 0)) > silence.size())
        return kResultFalse;
    if (data.numSamples <= 0)
        landParameterChanges();
    else
        processAudio(data);
    return kResultOk;
}

void Orbel_VST3::processAudio(ProcessData& data)
{
    ChannelTables channels;
    wireInputs(data, silence.data(), channels.inputs);
    wireOutputs(data, silence.data(), channels.outputs);
    AudioBusInformation information(channels.inputs, data.inputs ? data.numInputs : 0, channels.outputs,
                                    data.numOutputs, data.numSamples);

    const ProcessContext* const context = data.processContext;
    const double setRate = getProcessSetup().sampleRate;
    const double rate = context && context->sampleRate > 0.0 ? context->sampleRate : setRate;
    CHostTimeInfo& time = information.timeInfo;
    time = timeOf(context, setRate);
    currentTempo = time.tempo;

    const double beats = beatsPerSample(time, rate);
    const int longest = longestPiece(effect->getDesiredProcessBlockSize(), data.numSamples);
    effect->prepareSyncParameterSet(time, data.numSamples);
    for (int32 remaining = data.numSamples; remaining > 0;)
    {
        int32 piece = std::min(longest, remaining);
        effect->syncSetParameters(piece);
        information.numSamples = piece;
        effect->processAudio(information);
        information.advanceInput(piece);
        information.advanceOutput(piece);
        time.samplePosition += piece;
        time.ppqPosition += piece * beats;
        time.samplesToNextBeat -= piece;
        remaining -= piece;
    }
    effect->clearSyncSetEvents();
}

// Of a queue the last point alone counts, at its own offset.
void Orbel_VST3::takeParameterChanges(IParameterChanges& changes)
{
    for (int32 i = 0; i < changes.getParameterCount(); ++i)
    {
        IParamValueQueue* const queue = changes.getParameterData(i);
        int32 sampleOffset = 0;
        ParamValue position = 0.0;
        if (!queue || queue->getPoint(queue->getPointCount() - 1, sampleOffset, position) != kResultOk)
            continue;
        const ParamID id = queue->getParameterId();
        if (takesMidi() && id - firstController < ParamID(midiChannels * controllersPerChannel))
            takeController(id, sampleOffset, position);
        else
            takeParameterChange(id, sampleOffset, position);
    }
}

void Orbel_VST3::takeParameterChange(ParamID id, int32 sampleOffset, ParamValue position)
{
    if (id == kOwnBypass && bypassParameterId == kOwnBypass)
        setActive(position == 0.0);
    OrbelVST3Parameter* const parameter = findParameter(id);
    if (!parameter || parameter->editing || parameter->getProperty() == &programProperty)
        return;
    if (position != parameter->getNormalized())
        effect->addSyncParameterSetEvent(parameter->getProperty(), float(position), sampleOffset);
}

// Brings in at once what waits for its sample: for a host that changes parameters while nothing plays.
void Orbel_VST3::landParameterChanges()
{
    CHostTimeInfo noTime;
    int frames = 1;
    effect->prepareSyncParameterSet(noTime, 0);
    effect->syncSetParameters(frames);
    effect->clearSyncSetEvents();
}

// Pressure has no status of its own here; pitch bend is 14 bits, the low seven first.
void Orbel_VST3::takeController(ParamID id, int32 sampleOffset, ParamValue position)
{
    const int number = int(id - firstController);
    const int controller = number % controllersPerChannel;
    OrbelMidiEvent event;
    event.sampleOffset = sampleOffset;
    event.channel = std::uint8_t(number / controllersPerChannel);
    if (controller == kPitchBend)
    {
        const int bend = Core::truncate<int>(position * 16383.0);
        event.raw[0] = std::uint8_t(0xE0 | event.channel);
        event.raw[1] = bend & 127;
        event.raw[2] = bend >> 7 & 127;
    }
    else if (controller != kAfterTouch)
    {
        event.raw[0] = std::uint8_t(0xB0 | event.channel);
        event.raw[1] = std::uint8_t(controller);
        event.raw[2] = std::uint8_t(Core::truncate<int>(position * 127.0));
    }
    pendingMidi.push_back(event);
}

static void setNote(OrbelMidiEvent& event, int type, int16 channel, int16 pitch, float velocity)
{
    event.channel = std::uint8_t(channel);
    event.noteNumber = pitch;
    event.eventType = type;
    event.velocity = velocity;
    event.raw[0] = std::uint8_t(type | channel);
    event.raw[1] = std::uint8_t(pitch);
    event.raw[2] = Core::truncate<int>(velocity * 127.0f) & 127;
}

// False for one that the framework has no word for.
static bool translate(const Event& from, OrbelMidiEvent& event)
{
    event.sampleOffset = from.sampleOffset;
    switch (from.type)
    {
    case Event::kNoteOnEvent:
        setNote(event, OrbelMidiEvent::noteOn, from.noteOn.channel, from.noteOn.pitch, from.noteOn.velocity);
        return true;
    case Event::kNoteOffEvent:
        setNote(event, OrbelMidiEvent::noteOff, from.noteOff.channel, from.noteOff.pitch, 0.0f);
        return true;
    case Event::kDataEvent:
        if (!from.data.bytes || from.data.size == 0)
            return false;
        std::copy_n(from.data.bytes, std::min<uint32>(from.data.size, sizeof event.raw), event.raw);
        event.eventType = event.raw[0] & 0xF0;
        return true;
    default:
        return false;
    }
}

void Orbel_VST3::takeEvents(IEventList& events)
{
    for (int32 i = 0; i < events.getEventCount(); ++i)
    {
        Event from{};
        OrbelMidiEvent event;
        if (events.getEvent(i, from) == kResultOk && translate(from, event))
            pendingMidi.push_back(event);
    }
}

void Orbel_VST3::processMidi()
{
    if (!pendingMidi.empty())
        effect->processMidiEventList(pendingMidi);
    pendingMidi.clear();
}
}
