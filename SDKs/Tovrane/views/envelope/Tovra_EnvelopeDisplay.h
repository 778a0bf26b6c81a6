// SPDX-License-Identifier: GPL-3.0-or-later
// Shows an envelope as a chain of points joined by bent lines, over a grid of times and levels, and writes
// every drag into the parameters that its points name. It knows nothing of an effect: it follows the
// parameters by listening. The vector of points runs [knob] point [knob] point, each knob before the point
// whose segment it bends.
//
// Holding shift drags the level alone, and finely; alt the time alone. A click with the middle button sets
// the level to its default, or the bend of a knob.
//
// [window thread]; parameterChanged and setTempo come on any thread: they only note that places have to be
// computed again, which happens before the display draws and before it looks where the mouse is.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/views/controls/DisplayColors.h"
#include "Tovrane/views/envelope/CEnvelopePoint.h"
#include "Tovrane/views/envelope/EnvelopeCurves.h"
#include "Tovrane/views/envelope/KnobDrag.h"
#include "Tovrane/views/tree/CControl.h"
#include "Tovrane/views/tree/Tovra_ObjectConstructorInfoBase.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

namespace Tovra
{
class CDrawPath;

// Where the running envelope is. [window thread], of what an audio thread leaves behind.
class IEnvelopeStateSource
{
public:
    // The fraction of a segment, 0 to 1, and the segment's index; below 0 where nothing runs.
    virtual void getEnvelopeState(float& fraction, int& segment) = 0;

protected:
    ~IEnvelopeStateSource() = default;
};

class Tovra_EnvelopeDisplay : public CControl
{
public:
    struct CInfo : Tovra_ObjectConstructorInfoBase
    {
        void createObject() override;
        CBitmap* handleBitmap =
            nullptr; // rows of handles: usual, under the mouse, blinking if there are three
        bool hasThreeRows = false;
        bool tempoSync = false;        // times follow the tempo
        bool absoluteTimeText = false; // a point's label shows the time from the start
        IEnvelopeStateSource* stateSource = nullptr;
    };

    explicit Tovra_EnvelopeDisplay(const CInfo& info);
    Tovra_EnvelopeDisplay(const Tovra_EnvelopeDisplay&) = delete;

    // The points, from left to right. The parameters stay their owner's. A point that names a curve gets a
    // knob before it.
    virtual void addEnvelopePoint(const CEnvelopePoint& added);
    virtual void clearPoints();
    int getNumEnvelopePoints() const { return int(points.size()); }
    // Null beyond the vector.
    CEnvelopePoint* getEnvelopePointFromIndex(int index);
    // The handle that is hit, or the knob; without shown knobs a segment itself is its knob's. Null for none.
    CEnvelopePoint* getEnvelopePointFromCPoint(const CPoint& where);
    CEnvelopePoint* getMouseOverPoint() const { return mouseOver; }

    // The time across the inner rectangle at zoom 1, in milliseconds; under tempo sync as it would be at 128
    // BPM.
    virtual void setDisplayTime(float milliseconds);
    virtual float getDisplayTime() const { return displayTime; }
    // [any thread]  10 to 1000 beats a minute.
    virtual void setTempo(float beatsPerMinute);
    virtual float getTempo() const { return tempo; }
    virtual void setZoom(float factor);
    virtual void setTimeOffset(float milliseconds);
    // Whether the shown time follows the envelope only once it is much too long or too short.
    void setHysteresis(bool isOn) { hasHysteresis = isOn; }
    virtual void setCurveType(int type);
    // A bar from the bottom, 0 to 1.
    virtual void setVelocity(float height);
    virtual void setEnvelopeEnabled(bool isOn);
    void setDisplayCurveKnobs(bool isOn) { showsKnobs = isOn; }
    void setFillGradient(bool isOn, bool fromCentre, bool inverted, float strength);
    // Where the envelope is: the segment, and a fraction from 0 to 1; any other one is 0. A segment that was
    // just passed blinks.
    virtual void setEnvelopePosition(int segment, float fraction);
    // Asks the state source.
    virtual void updateEnvelopeState();

    // Between times in milliseconds, normalised levels, and places in the inner rectangle.
    virtual double convertTimeToX(const CEnvelopePoint* point, float time) const;
    virtual float convertXToTime(const CEnvelopePoint* point, double x) const;
    virtual float convertYToLevel(const CEnvelopePoint* point, double y) const;
    virtual double convertLevelToY(const CEnvelopePoint* point, float level) const;

    // [any thread]
    void parameterChanged(Orbel::ParameterProperty* property) override;
    void draw(CDrawContext* context) override;
    MouseEventResult onMouseDown(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseMoved(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseUp(CPoint& where, const long& buttons) override;
    MouseEventResult onMouseExited(CPoint& where, const long& buttons) override;
    bool holdsMouse() const override { return edited != nullptr; }
    void cancelEdit() override;
    void applyMarks() override;
    void setViewSize(const CRect& rect, bool invalidate = true) override;
    void updateReadout() override;
    bool isTypeOf(const char* name) const override;
    CView* newCopy() const override { return nullptr; }
    const char* getClassName() const override { return "Tovra_EnvelopeDisplay"; }

protected:
    using CControl::beginEdit;
    using CControl::endEdit;

    // What preCalculateDraw computes.
    enum Computed : int
    {
        computePlaces = 1,
        fitDisplayTime = 2
    };
    virtual void preCalculateDraw(int what);
    // Computes what is out of date.
    void settle();
    virtual void calculatePointPosition(CEnvelopePoint& point, const CEnvelopePoint* before,
                                        CEnvelopePoint* after);

    virtual void beginEdit(CEnvelopePoint* point);
    virtual void endEdit(CEnvelopePoint* point);
    // What a place in the inner rectangle means: the duration in milliseconds, and the level's value.
    virtual void getValueFromPoint(const CEnvelopePoint* point, const CPoint& where, float& time,
                                   float& level) const;
    // Keeps a point right of the one before it, and off its handle.
    virtual void checkNeighborOverlap(CPoint& where, const CEnvelopePoint* point) const;
    // May move a time, in milliseconds, to one nearby.
    virtual void checkSnapTime(const CEnvelopePoint*, float& /*time*/) {}
    virtual double getDeadZonePixelWidth() const { return 150.0; }
    // The text of a point, for the read-out.
    virtual std::string readoutOf(const CEnvelopePoint* point) const;

    // Into the inner rectangle, in this order, below the lines.
    virtual void drawGrid(CDrawContext* context, const CRect& rect);
    virtual void drawGridX(CDrawContext* context, const CRect& rect);
    virtual void drawGridY(CDrawContext* context, const CRect& rect);
    virtual void drawEnvelopeLines(CDrawContext* context, const CRect& rect);
    virtual void drawEnvelopeHandles(CDrawContext* context, const CRect& rect);
    virtual void drawMouseOver(CDrawContext* context, const CEnvelopePoint* point);

    const CRect& innerRect() const { return inner; }
    // Draws a part again, in the coordinates in which the display is drawn.
    void markPart(CRect part);
    bool isTempoSynced() const { return tempoSync; }
    // The number of milliseconds that one of a parameter's stands for, at this tempo.
    float tempoFactor() const;
    std::vector<CEnvelopePoint>& allPoints() { return points; }
    void listenTo(const CEnvelopePoint& point, bool isListening);
    void stopListening() override;

private:
    struct Axis // a fine drag along one of them
    {
        bool isHeld = false;
        double anchor = 0.0;
        float start = 0.0f;
        void follow(bool held, double at, const Orbel::ParameterProperty* property);
    };

    void takeInnerRect();
    void fitTime();
    float timeOfPoint(const CEnvelopePoint& point) const;
    float totalTime() const;
    CEnvelopePoint* pointAt(int index) { return getEnvelopePointFromIndex(index); }
    const CEnvelopePoint* segmentStart(const CEnvelopePoint& point) const;
    CPoint absolute(const CPoint& place) const;
    CEnvelopePoint* segmentUnder(const CPoint& where);
    float directionOf(const CEnvelopePoint& knob) const;
    void pointTo(CEnvelopePoint* point);
    void resetPoint(CEnvelopePoint& point);
    void followModifiers(const CPoint& where, long buttons);
    void dragKnob(const CPoint& where, long buttons);
    void dragPoint(const CPoint& where, long buttons);
    CPoint snapped(CPoint place, const CEnvelopePoint& point, long buttons) const;
    void writeLevel(const CEnvelopePoint& point, const CPoint& where, long buttons, float next);
    void writeTime(const CEnvelopePoint& point, const CPoint& where, long buttons, float next);
    void write(Orbel::ParameterProperty* property, float next);
    void writeNormalized(Orbel::ParameterProperty* property, float next);
    void traceSegment(CDrawPath& path, const CPoint& from, const CPoint& to, float curve) const;
    void drawSegment(CDrawContext* context, const CEnvelopePoint& from, const CEnvelopePoint& to);
    std::optional<CRect> dotPlace() const;
    void drawDot(CDrawContext* context);
    void fillBelow(CDrawContext* context);
    void drawHandle(CDrawContext* context, const CEnvelopePoint& point, bool blinks);

    CBitmap* const handleBitmap;
    double handleWidth = 8.0;
    double handleHeight = 8.0;
    const bool hasThreeRows;
    const bool tempoSync;
    const bool absoluteTimeText;
    IEnvelopeStateSource* const stateSource;
    CRect inner;
    std::vector<CEnvelopePoint> points;

    Core::Relaxed<float> tempo = 128.0f;
    std::atomic<bool> isStale = false; // places have to be computed again
    float timeOffset = 0.0f;
    float displayTime = 1000.0f;
    float zoom = 1.0f;
    bool hasHysteresis = true;

    CEnvelopePoint* edited = nullptr;
    CEnvelopePoint* mouseOver = nullptr;
    CPoint lastMouse{-1.0, -1.0};
    CPoint grabOffset;
    KnobDrag knobDrag;
    Axis levelAxis;
    Axis timeAxis;

    bool envelopeEnabled = true;
    int envelopePosition = -1;
    float positionFraction = 0.0f;
    std::vector<int> blinks; // draws that are left, for each point
    float velocity = 0.0f;
    CurveFamily curves;
    bool showsKnobs = true;
    bool hasGradient = false;
    bool isGradientFromCentre = false;
    bool isGradientInverted = false;
    float gradientStrength = 1.0f;
};
}
