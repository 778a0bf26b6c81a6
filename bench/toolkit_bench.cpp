// SPDX-License-Identifier: GPL-3.0-or-later
// The cost of a full paint of an editor's frame and of its parts, compared with a plain fill and a plain copy
// of the same picture in the same run.
#include "Orbel/parameters/ParameterProperty.h"
#include "Tovrane/draw/CBitmap.h"
#include "Tovrane/draw/CDrawContext.h"
#include "Tovrane/draw/CDrawPath.h"
#include "Tovrane/draw/CFontDesc.h"
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PNGStreams.h"
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/draw/PelmoAGG.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "Tovrane/shell/CTovraneEditor.h"
#include "Tovrane/shell/IdleList.h"
#include "Tovrane/views/controls/Tovra_AnimKnob.h"
#include "Tovrane/views/tree/CFrame.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

using namespace Tovra;

namespace
{
constexpr int width = 600;
constexpr int height = 350;
constexpr int textLines = 40;
constexpr int shapes = 30;
constexpr int bandPoints = 550;

class MemoryStream : public ITovraPNGStream
{
public:
    explicit MemoryStream(std::vector<unsigned char> contents) : bytes(std::move(contents)) {}

    bool read(unsigned char* target, unsigned long count) override
    {
        if (bytes.size() - position < count)
            return false;
        std::copy_n(bytes.begin() + std::ptrdiff_t(position), count, target);
        position += count;
        return true;
    }

private:
    std::vector<unsigned char> bytes;
    size_t position = 0;
};

// An opaque picture with a gradient, for a scale.
CBitmap* makeBackground(int scale)
{
    CMACBitmap memory;
    memory.setSize(unsigned(width * scale), unsigned(height * scale));
    PelmoAGG renderer;
    renderer.attach(memory.getPixelPtr(), memory.getWidth(), memory.getHeight(), memory.getRowBytes());
    renderer.fillLinearGradient(0, 0, 0, height * scale, {60, 64, 72, 255}, {28, 30, 34, 255}, 1.0);
    renderer.rectangle(0, 0, width * scale, height * scale);
    MemoryStream stream(writePNG(memory));
    const auto made = new CBitmap("", false);
    made->loadScaled(stream, scale);
    return made;
}

CBitmap& background(int scale)
{
    static std::map<int, CBitmap*> made;
    CBitmap*& one = made[scale];
    if (one == nullptr)
        one = makeBackground(scale);
    return *one;
}

void drawTexts(CDrawContext& context)
{
    context.setFont(kNormalFont, 12.0, 0);
    context.setFontColor(kWhiteCColor);
    for (int i = 0; i < textLines; ++i)
    {
        const double x = 10 + i % 4 * 145, y = 10 + i / 4 * 22;
        context.drawString("Release 125.0 ms", {x, y, x + 140, y + 18}, true, CHoriTxtAlign(i % 3));
    }
}

void drawShapesAt(CDrawContext& context, double shift)
{
    context.setFrameColor({245, 166, 66, 255});
    context.setFillColor({84, 176, 214, 160});
    context.setLineWidth(1.5);
    for (int i = 0; i < shapes; ++i)
    {
        const double x = 10 + i % 10 * 58 + shift, y = 20 + i / 10 * 110;
        const CRect rect(x, y, x + 50, y + 60);
        const auto style = CDrawStyle(i % 3);
        if (i % 4 == 0)
            context.drawRect(rect, style);
        else if (i % 4 == 1)
            context.drawRoundRect(rect, 8.0f, style);
        else if (i % 4 == 2)
            context.drawEllipse(rect, style);
        else
            context.drawArc(rect, 135.0f, 270.0f, style);
    }
}

void drawShapes(CDrawContext& context)
{
    drawShapesAt(context, 0.0);
}

// A little farther each time, as what moves is.
void drawMovingShapes(CDrawContext& context)
{
    static int turn = 0;
    drawShapesAt(context, (turn++ % 9973) / 9973.0);
}

void drawBand(CDrawContext& context)
{
    context.getAGGRenderer()->fillLinearGradient(0, 230, 0, 340, {245, 166, 66, 230}, {200, 90, 60, 130},
                                                 {60, 40, 60, 40});
    CDrawPath path(&context);
    path.moveTo(25.0f, 340.0f);
    for (int i = 0; i < bandPoints; ++i)
        path.lineTo(25.0f + float(i), 260.0f + 30.0f * std::sin(float(i) * 0.05f));
    path.lineTo(25.0f + bandPoints, 340.0f);
    path.closePath();
    path.finish(kFilled, false);
}

void drawBackground(CDrawContext& context)
{
    background(int(context.getScale())).draw(&context, {0, 0, width, height}, {0, 0});
}

using Part = void (*)(CDrawContext&);

class Parts : public CView
{
public:
    explicit Parts(std::vector<Part> drawn) : CView({0, 0, width, height}), parts(std::move(drawn)) {}

    void draw(CDrawContext* context) override
    {
        for (Part part : parts)
            part(*context);
        setDirty(false);
    }

private:
    std::vector<Part> parts;
};

void paint(benchmark::State& state, const std::vector<Part>& parts, double scale)
{
    const auto frame = new CFrame(CRect(0, 0, width, height), nullptr, nullptr);
    frame->setScale(scale);
    frame->setTransparency(true); // only the parts are drawn
    frame->addView(new Parts(parts));
    frame->idle();
    for (auto _ : state)
    {
        frame->setDirty(true);
        frame->idle();
        benchmark::ClobberMemory();
    }
    frame->close();
    frame->forget();
}

// A text on a ground of its own.
class Label : public CView
{
public:
    Label() : CView({270, 165, 330, 183}) {}

    void show(int number)
    {
        std::snprintf(text, sizeof text, "%d.%d ms", number / 10, number % 10);
        setDirty(true);
    }

    void draw(CDrawContext* context) override
    {
        context->setFillColor({40, 44, 52, 255});
        context->drawRect(getViewSize(), kFilled);
        context->setFont(kNormalFont, 12.0, 0);
        context->setFontColor(kWhiteCColor);
        context->drawString(text, getViewSize(), true, kTextCenter);
        setDirty(false);
    }

private:
    char text[24] = "";
};

// A label that changes over the full picture, which is drawn beneath it again or kept.
void paintLabel(benchmark::State& state, const std::vector<Part>& parts, bool isKept)
{
    const auto frame = new CFrame(CRect(0, 0, width, height), nullptr, nullptr);
    frame->setTransparency(!isKept);
    frame->keepGround(isKept);
    frame->addView(new Parts(parts));
    frame->getView(0)->setStatic(true);
    const auto label = new Label();
    frame->addView(label);
    frame->idle();
    for (int number = 0; auto _ : state)
    {
        label->show(number++ % 1000);
        frame->idle();
        benchmark::ClobberMemory();
    }
    frame->close();
    frame->forget();
}

// An idle call of the host with nothing to draw, for as many views as an editor has.
void idleTick(benchmark::State& state)
{
    constexpr int views = 80;
    const auto frame = new CFrame(CRect(0, 0, width, height), nullptr, nullptr);
    for (int i = 0; i < views; ++i)
        frame->addView(new Parts({}));
    frame->idle();
    for (auto _ : state)
        frame->idle();
    frame->close();
    frame->forget();
}

// Dials of 60 pictures, each bound to a parameter of its own, in an editor that is open.
class Dials : public CTovraneEditor
{
public:
    static constexpr int count = 40;

    Dials() : CTovraneEditor(nullptr)
    {
        constexpr unsigned pictures = 60;
        memory.setSize(side, side * pictures);
        for (unsigned i = 0; i < side * side * pictures; ++i)
            reinterpret_cast<std::uint32_t*>(memory.getPixelPtr())[i] = 0x01000000u * (i % 255) + i % 90;
        picture->attachImg(&memory);
        setSize(width, height);
        open(nullptr);
    }
    ~Dials() override { Dials::close(); }

    void turnAll()
    {
        for (int i = 0; i < count; ++i)
            parameters[i].setValue(float((turn + 23 * i) % 1009) / 1009.0f);
        turn += 7;
    }

protected:
    void prepeareGUI(CFrame* made) override
    {
        made->setBackground(&background(1));
        for (int i = 0; i < count; ++i)
        {
            const double x = 10 + i % 10 * 58, y = 20 + i / 10 * 80;
            made->addView(new Tovra_AnimKnob({x, y, x + side, y + side}, nullptr, 0, 60, side, picture.get(),
                                             CPoint(), &parameters[i]));
        }
    }

private:
    static constexpr unsigned side = 48;
    CMACBitmap memory;
    Kept<CBitmap> picture = Kept<CBitmap>::adopt(new CBitmap(nullptr, true));
    Orbel::ParameterProperty parameters[count];
    int turn = 0;
};

void turnDials(benchmark::State& state)
{
    Dials dials;
    for (auto _ : state)
    {
        dials.turnAll();
        dials.idle();
        benchmark::ClobberMemory();
    }
}

void idleForASecond(benchmark::State& state)
{
    Dials dials;
    for (int i = 0; i < 100; ++i)
        dials.idle(); // until nothing glides any more
    for (auto _ : state)
        for (int i = 0; i < 1000 / Orbel::IdleList::interval; ++i)
            dials.idle();
}

void fillPlainly(benchmark::State& state)
{
    std::vector<std::uint32_t> picture(size_t(width) * height);
    for (auto _ : state)
    {
        std::fill(picture.begin(), picture.end(), 0xFF203040u);
        benchmark::ClobberMemory();
    }
}

void copyPlainly(benchmark::State& state)
{
    std::vector<std::uint32_t> from(size_t(width) * height, 7), to(from.size());
    for (auto _ : state)
    {
        std::memcpy(to.data(), from.data(), from.size() * sizeof from[0]);
        benchmark::ClobberMemory();
    }
}

// Prints the usual table and collects it, for the ratios at the end.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.aggregate_name == "median" || run.repetitions == 1)
                microseconds[run.run_name.function_name] = run.GetAdjustedCPUTime() / 1e3;
    }

    void printRatios()
    {
        std::printf("\n| case | microseconds | to a fill | to a copy |\n| --- | --- | --- | --- |\n");
        for (const auto& [name, cost] : microseconds)
            std::printf("| %s | %.1f | %.2f | %.2f |\n", name.c_str(), cost, cost / microseconds["ref: fill"],
                        cost / microseconds["ref: copy"]);
    }

private:
    std::map<std::string, double> microseconds;
};
}

int main(int argc, char** argv)
{
    Tovra::useHeadlessFrames();
    benchmark::RegisterBenchmark("ref: fill", fillPlainly);
    benchmark::RegisterBenchmark("ref: copy", copyPlainly);
    const auto add = [](const char* name, std::vector<Part> parts, double scale = 1.0)
    {
        benchmark::RegisterBenchmark(name,
                                     [parts, scale](benchmark::State& state) { paint(state, parts, scale); });
    };
    const std::vector<Part> all = {drawBackground, drawTexts, drawShapes, drawBand};
    add("full paint", all);
    add("full paint at 2x", all, 2.0);
    add("full paint at 3x", all, 3.0);
    for (const bool isKept : {false, true})
        benchmark::RegisterBenchmark(isKept ? "label on a kept ground" : "label",
                                     [all, isKept](benchmark::State& state)
                                     { paintLabel(state, all, isKept); });
    add("background", {drawBackground});
    add("40 texts", {drawTexts});
    add("30 shapes", {drawShapes});
    add("30 moving shapes", {drawMovingShapes});
    add("gradient band", {drawBand});
    add("nothing", {});
    benchmark::RegisterBenchmark("idle tick", idleTick);
    benchmark::RegisterBenchmark("open window, a second", idleForASecond);
    benchmark::RegisterBenchmark("40 dials that move", turnDials);
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
}
