// SPDX-License-Identifier: GPL-3.0-or-later
// Views that log the events that they receive, and react as a test wants.
#pragma once

#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/views/tree/CControl.h"
#include "Tovrane/views/tree/CFrame.h"
#include "Tovrane/views/tree/IFrameEditor.h"

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace Tovra
{
inline void PrintTo(const CRect& r, std::ostream* out)
{
    *out << "(" << r.left << ", " << r.top << ", " << r.right << ", " << r.bottom << ")";
}

inline void PrintTo(const CPoint& p, std::ostream* out)
{
    *out << "(" << p.x << ", " << p.y << ")";
}
}

using Log = std::vector<std::string>;

// Takes the entries out of the log.
inline Log taken(Log& log)
{
    return std::exchange(log, Log());
}

// Base is CView, CViewContainer or CControl. Entries read "name down 5,6 2": event, point, mouse word. A
// container's entries come before those of its children.
template <typename Base>
class Recording : public Base
{
public:
    template <typename... More>
    Recording(Log& log, std::string ownName, const Tovra::CRect& rect, More... more)
        : Base(rect, more...), entries(&log), name(std::move(ownName))
    {
    }
    ~Recording() override { write("gone"); }

    // Results of events by their word ("down", "move" ...); without one it is the result of Base.
    std::map<std::string, long> answers;
    // Called within every event with its word.
    std::function<void(const std::string&)> reaction;

    Tovra::MouseEventResult onMouseDown(Tovra::CPoint& where, const long& buttons) override
    {
        return mouse("down", where, buttons, [&] { return Base::onMouseDown(where, buttons); });
    }
    Tovra::MouseEventResult onMouseUp(Tovra::CPoint& where, const long& buttons) override
    {
        return mouse("up", where, buttons, [&] { return Base::onMouseUp(where, buttons); });
    }
    Tovra::MouseEventResult onMouseMoved(Tovra::CPoint& where, const long& buttons) override
    {
        return mouse("move", where, buttons, [&] { return Base::onMouseMoved(where, buttons); });
    }
    Tovra::MouseEventResult onMouseEntered(Tovra::CPoint& where, const long& buttons) override
    {
        return mouse("enter", where, buttons, [&] { return Base::onMouseEntered(where, buttons); });
    }
    Tovra::MouseEventResult onMouseExited(Tovra::CPoint& where, const long& buttons) override
    {
        return mouse("exit", where, buttons, [&] { return Base::onMouseExited(where, buttons); });
    }
    bool onWheel(const Tovra::CPoint& where, const float& distance, const long& buttons) override
    {
        return event("wheel", " " + text(where) + " " + text(distance),
                     [&] { return long(Base::onWheel(where, distance, buttons)); });
    }
    bool onWheel(const Tovra::CPoint& where, const Tovra::CMouseWheelAxis& axis, const float& distance,
                 const long& buttons) override
    {
        write(axis == Tovra::kMouseWheelAxisX ? "axisX" : "axisY");
        return Base::onWheel(where, axis, distance, buttons);
    }
    long onKeyDown(Tovra::TovraKeyCode& code) override
    {
        return event("key", "", [&] { return Base::onKeyDown(code); });
    }
    long onKeyUp(Tovra::TovraKeyCode& code) override
    {
        return event("keyUp", "", [&] { return Base::onKeyUp(code); });
    }
    void looseFocus() override
    {
        event("loose", "", [&] { return Base::looseFocus(), 0L; });
    }
    void onDragEnter(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override
    {
        event("dragEnter", " " + text(where), [&] { return Base::onDragEnter(drag, where), 0L; });
    }
    void onDragMove(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override
    {
        event("dragMove", " " + text(where), [&] { return Base::onDragMove(drag, where), 0L; });
    }
    void onDragLeave(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override
    {
        event("dragLeave", " " + text(where), [&] { return Base::onDragLeave(drag, where), 0L; });
    }
    bool onDrop(Tovra::CDragContainer* drag, const Tovra::CPoint& where) override
    {
        return event("drop", " " + text(where), [&] { return long(Base::onDrop(drag, where)); });
    }
    void draw(Tovra::CDrawContext* context) override
    {
        event("draw", " at " + text(context->getOffset()) + " clip " + text(context->getClipRect()),
              [&] { return Base::draw(context), 0L; });
    }
    Tovra::CView* newCopy() const override { return new Recording(*this); }

private:
    static std::string text(double number) { return (std::ostringstream() << number).str(); }
    static std::string text(const Tovra::CPoint& p) { return text(p.x) + "," + text(p.y); }
    static std::string text(const Tovra::CRect& r)
    {
        return text(r.left) + "," + text(r.top) + "," + text(r.right) + "," + text(r.bottom);
    }

    void write(const std::string& what) { entries->push_back(name + " " + what); }

    template <typename Default>
    Tovra::MouseEventResult mouse(const char* word, const Tovra::CPoint& where, long buttons, Default base)
    {
        const std::string details = " " + text(where) + " " + std::to_string(buttons);
        return Tovra::MouseEventResult(event(word, details, [&] { return long(base()); }));
    }

    template <typename Default>
    long event(const std::string& word, const std::string& details, Default base)
    {
        write(word + details);
        const std::function<void(const std::string&)> react = reaction; // it may destroy the view
        const auto answer = answers.find(word);
        const long result = answer != answers.end() ? answer->second : base();
        if (react)
            react(word);
        return result;
    }

    Log* entries;
    std::string name;
};

class PlainControl : public Tovra::CControl
{
public:
    using CControl::CControl;
    void draw(Tovra::CDrawContext*) override { setDirty(false); }
    Tovra::CView* newCopy() const override { return new PlainControl(*this); }
};

using RecordingView = Recording<Tovra::CView>;
using RecordingContainer = Recording<Tovra::CViewContainer>;
using RecordingControl = Recording<PlainControl>;

// A frame of 200 x 100 without a window, closed at the end.
class HeadlessTest : public testing::Test
{
protected:
    explicit HeadlessTest(Tovra::IFrameEditor* editor = nullptr)
        : frame(Tovra::Kept<Tovra::CFrame>::adopt(
              new Tovra::CFrame(Tovra::CRect(0.0, 0.0, 200.0, 100.0), nullptr, editor)))
    {
    }
    ~HeadlessTest() override { close(); }

    void close()
    {
        if (frame)
            frame->close();
        frame.reset();
    }

    Tovra::HeadlessFrame& window() { return *Tovra::HeadlessFrame::of(*frame.get()); }
    Tovra::WindowEvents& user() { return window().events(); }

    // Adds a view on top of the others.
    RecordingView* add(const char* name, const Tovra::CRect& rect, Tovra::CViewContainer* in = nullptr)
    {
        return place(new RecordingView(log, name, rect), in);
    }
    RecordingContainer* addContainer(const char* name, const Tovra::CRect& rect,
                                     Tovra::CViewContainer* in = nullptr)
    {
        return place(new RecordingContainer(log, name, rect), in);
    }
    template <typename View>
    View* place(View* view, Tovra::CViewContainer* in = nullptr)
    {
        EXPECT_TRUE((in != nullptr ? in : frame.get())->addView(view));
        return view;
    }

    // Draws what is dirty and clears the log.
    void settle()
    {
        frame->idle();
        log.clear();
    }

    Log log;
    Tovra::Kept<Tovra::CFrame> frame;
};
