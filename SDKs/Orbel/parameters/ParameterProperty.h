// SPDX-License-Identifier: GPL-3.0-or-later
// One named, ranged, curved parameter of the effect: its value in real units (milliseconds, linear gain,
// a note number), the way to and from the position 0 to 1 of hosts and knobs, its text both ways, and
// the listeners that hear of every write.
//
// Made and configured on the window thread, normally by CPropertyManager; texts, unit, renderers and
// listeners are changed there only. Numbers are written and read on any thread, the audio thread
// included, and listeners hear of a write on the thread that wrote.
//
// A write does not compare: writing the present value again tells everybody again. A NaN is refused by every
// setter: nothing changes and nobody is told. Infinities are clamped like any number beyond the range.
#pragma once

#include "CORE/CString.h"
#include "CORE/Relaxed.h"
#include "Orbel/parameters/IPluginParameter.h"
#include "Orbel/parameters/ListenerList.h"
#include "Orbel/parameters/ParameterChangeListener.h"
#include "Orbel/parameters/ParameterPropertySetup.h"
#include "Orbel/parameters/ParameterUnitType.h"
#include "Orbel/parameters/TimedValueSlot.h"

#include <optional>
#include <string_view>

namespace Orbel
{
class ParameterProperty;

// Size of every text buffer that a caller hands in: at most so many bytes are written, with the closing 0.
constexpr int kParameterTextSize = 256;

// Flags of getStringFromValue.
constexpr long kRenderWithUnit = 1;
constexpr long kRenderWithName = 2; // the long name and ": " before the value
constexpr long kRenderShort = 4;    // fewer decimals

// Replacements for the text of a value. They write the whole text, with the unit if it is asked for, into a
// buffer of kParameterTextSize bytes.
using ParameterTextRenderer = void (*)(float value, char* text, bool withUnit);
using ParameterContextRenderer = void (*)(ParameterProperty* property, float value, char* text, bool withUnit,
                                          void* data);

class IParameterTextRenderer
{
public:
    virtual ~IParameterTextRenderer() = default;
    // Knows its property, and reads the value from it.
    virtual void renderText(char* text, bool withUnit) = 0;
};

// The reverse of a replacement, for what a user types: the value whose text this is, or nothing for a text
// that cannot be read. The text comes in lower case, with a decimal point, without blanks at its ends
// (plainText); data is the property's data pointer.
using ParameterTextReader = std::optional<float> (*)(const ParameterProperty& property,
                                                     std::string_view plain, const void* data);

class ParameterProperty : public IPluginParameter
{
public:
    // Range 0 to 1, value and default 0, linear, SignedPercent, automatable, without texts.
    ParameterProperty();
    ParameterProperty(const ParameterProperty&) = delete;
    // [window thread]  Takes over what setup() sets, then writes the other's value as setValue does.
    // Listeners, renderers, data pointer and automation index stay as they were.
    ParameterProperty& operator=(const ParameterProperty& other);

    // What a host sees. [any thread]
    long getParameterID() const override { return parameterId; }
    const char* getParameterName() const override { return longName.get(); }
    const char* getScaleUnit() const override { return unitName.get(); }
    double getNormalized() const override { return getCurrentValue_normalized(); }
    void setNormalized(double position) override { setValue_Normalized(float(position)); }
    // [window thread]  The value alone, without its unit, in the long form.
    void getStringFromValue(double realValue, Core::IString* text) override;
    // Does nothing: the text cannot be read through that interface, and nothing in the system asks for
    // it. Texts are entered by setValue(const char*).
    void setValueFromString(const Core::IString* text) override;
    // Both narrow to single precision first and do not clamp: outside the range is outside 0 to 1. A
    // range of no width gives what division by zero gives.
    double normalize(double realValue) const override;
    double denormalize(double position) const override;
    long getParameterFlags() const override { return 0; }
    double getDefaultValueNormalized() const override { return getDefaultValue_normalized(); }

    // Texts [window thread]: cut to 127, 63 and 63 characters; the destinations of the copying getters
    // hold 128, 64 and 64 bytes.
    virtual void setParamLongName(const char* name) { longName.set(name); }
    virtual void getParamLongName(char* out) const { longName.copyTo(out); }
    virtual const char* getParamLongName() const { return longName.get(); }
    virtual void setParamShortName(const char* name) { shortName.set(name); }
    virtual void getParamShortName(char* out) const { shortName.copyTo(out); }
    virtual const char* getParamShortName() const { return shortName.get(); }
    virtual void setID(const char* text) { idText.set(text); }
    virtual const char* getID() const { return idText.get(); }
    bool hasID(const char* text) const { return idText.compare(text) == 0; }

    // The unit type sets the unit name; an unknown number has none and reads as a plain number.
    virtual void getUnitName(char* out) const { unitName.copyTo(out); }
    virtual const char* getUnitName() const { return unitName.get(); }
    virtual void setUnitType(ParameterUnitType type);
    virtual ParameterUnitType getUnitType() const { return unitType; }

    // The range; a minimum above the maximum is a reversed range. If the value lies outside a new range, it
    // is moved into it, with a notification; otherwise nobody is told.
    virtual float getMin() const { return minimum; }
    virtual float getMax() const { return maximum; }
    virtual void setMin(float bound);
    virtual void setMax(float bound);

    // [window thread]  A listener is in the list once; with notifyNow it is called at once, also if it
    // was there before. Nobody is called after ForgetListener has returned, and it may wait for that.
    virtual void AddListener(ParameterChangeListener* listener, bool notifyNow);
    virtual void ForgetListener(ParameterChangeListener* listener);
    // [any thread]  Tells all listeners but the excepted one, the last added first.
    void notifyListeners(ParameterChangeListener* except = nullptr) { listeners.notify(this, except); }

    // Writes [any thread, but texts on the window thread]. The forms with a listener do not tell that
    // one: a control passes itself, so as not to be fed its own change. A position is clamped to 0 to 1
    // and its value is not clamped again; a value is clamped to the range.
    virtual void setValue_Normalized(float position) { setValue_Normalized(nullptr, position); }
    virtual void setValue_Normalized(ParameterChangeListener* writer, float position);
    virtual void setValue(float newValue) { setValue(nullptr, newValue); }
    virtual void setValue(ParameterChangeListener* writer, float newValue);
    // As a host passes on what its user typed, in the unit that is printed: a text that holds no number reads
    // as 0. What is typed into a window is read by readPropertyText. Of type Text: copies the text, cut to
    // 255 characters, to the data pointer's buffer of kParameterTextSize bytes, and writes 0.
    virtual void setValue(const char* text);
    virtual void setValueToDefault() { setValue(getDefaultValue()); }
    // Writes newValue, clamped to the range, only if the value still is what the writer has read before,
    // so that a write from another thread meanwhile is not overwritten. False: nothing was written and
    // nobody is told.
    bool replaceValue(float expected, float newValue, ParameterChangeListener* writer);

    // The default is clamped to the range; nobody is told.
    virtual void setDefaultValue(float newDefault);
    virtual float getDefaultValue_normalized() const { return float(normalize(defaultValue)); }
    virtual float getDefaultValue() const { return defaultValue; }

    // The curve bends the way between position and value; 0 is linear, above 0 the lower part of the
    // travel is fine, below 0 the upper. The value stays, the position moves, all listeners are told.
    virtual void setCurve(float coefficient);
    virtual float getCurve() const { return curve; }

    // [any thread]
    virtual int getCurrentValue_asINT() const; // truncated after a guard of 0.02
    virtual bool getCurrentValue_asBOOL() const { return value >= 0.5f; }
    virtual float getCurrentValue_normalized() const { return float(normalize(value)); }
    virtual float getCurrentValue() const { return value; }

    // Only the flag: the manager's list of automatable properties is made when a property is created.
    virtual void setAutomationAllowed(bool allowed) { automatable = allowed; }
    virtual bool isAutomateable() const { return automatable; }
    // Position in the manager's list of automatable properties, which writes it; -1 if not there.
    void setAutomationIndex(long index) { automationIndex = index; }
    long getAutomationIndex() const { return automationIndex; }

    // [window thread]  Takes everything from the row, the default without a clamp; then writes its value.
    virtual void setup(const ParameterPropertySetup* row);

    // Belongs to whoever set it: the text of a property of type Text, or the context renderer's argument.
    virtual void* getDataPointer() const { return dataPointer; }
    void setDataPointer(void* data) { dataPointer = data; }

    // [window thread]  The text of a value that this property might have, with kRender... flags, into
    // kParameterTextSize bytes.
    virtual void getStringFromValue(float realValue, char* text, long flags);

    // [window thread]  Replacements of the text; null takes one away. The first that is set, in this order,
    // is asked. What it writes is final: no unit is added to it.
    void setTextRenderer(ParameterTextRenderer renderer) { textRenderer = renderer; }
    void setContextRenderer(ParameterContextRenderer renderer, void* data);
    void setRendererObject(IParameterTextRenderer* renderer) { rendererObject = renderer; }
    // Whether getStringFromValue shows the value that it is given: an object shows the current one.
    bool showsAnyValue() const { return textRenderer || contextRenderer || !rendererObject; }
    // The reader beside whichever replacement is set; null, and texts are read by the unit type. See
    // readPropertyText.
    void setTextReader(ParameterTextReader reader) { textReader = reader; }
    ParameterTextReader getTextReader() const { return textReader; }

private:
    friend class TimedValueInbox;

    float clamped(float realValue) const;
    float valueAt(float position) const;
    void setBound(Core::Relaxed<float>& bound, float newBound);
    void store(ParameterChangeListener* writer, float newValue);
    bool renderByReplacement(float realValue, char* text, bool withUnit);

    // Numbers: written by any thread that writes the parameter.
    Core::Relaxed<long> parameterId = 0;
    Core::Relaxed<long> automationIndex = -1; // written by the manager
    Core::Relaxed<ParameterUnitType> unitType = ParameterUnitType::SignedPercent;
    Core::Relaxed<float> minimum = 0.0f;
    Core::Relaxed<float> maximum = 1.0f;
    Core::Relaxed<float> defaultValue = 0.0f;
    Core::Relaxed<float> value = 0.0f;
    Core::Relaxed<float> curve = 0.0f;
    Core::Relaxed<bool> automatable = true;
    Core::Relaxed<void*> dataPointer = nullptr;

    ParameterTextRenderer textRenderer = nullptr;
    ParameterContextRenderer contextRenderer = nullptr;
    IParameterTextRenderer* rendererObject = nullptr;
    ParameterTextReader textReader = nullptr;

    Core::CStringBufferd<64> idText;
    Core::CStringBufferd<128> longName;
    Core::CStringBufferd<64> shortName;
    Core::CStringBufferd<64> unitName;

    ListenerList listeners;
    TimedValueSlot timedValue;
};
}
