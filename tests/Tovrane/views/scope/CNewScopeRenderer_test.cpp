// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/views/scope/CNewScopeRenderer.h"
#include "Tovrane/views/tree/CFrame.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <string>

using namespace Tovra;

namespace
{
constexpr int columns = 120, height = 80;

struct Provider final : IScopeDataProvider
{
    int getNumDataLayer() const override { return 3; }
    bool tryLock() override { return !isBusy; }
    void unlock() override {}
    void lock() override {}
    void setNumDataPoints(int points) override
    {
        for (auto& layer : data)
            layer.assign(size_t(points), {});
    }
    bool getScopeData(int layer, scope_data_point_t* target, int count) override
    {
        std::copy_n(data[layer].begin(), count, target);
        return true;
    }

    std::vector<scope_data_point_t> data[3];
    bool isBusy = false;
};

class ScopeView : public CView
{
public:
    explicit ScopeView(Provider& provider) : CView({5.0, 5.0, 5.0 + columns, 5.0 + height})
    {
        CNewScopeRenderer::layer_style_t filled, both, outline;
        filled.drawStyle = kFilled;
        filled.gradientColors[0] = {200, 40, 40, 120};
        both.drawStyle = kFilledAndStroked;
        both.lineWidth = 1.4f;
        both.frameColor = {90, 200, 90, 200};
        both.gradientColors[1] = {40, 200, 200, 90};
        outline.lineWidth = 2.0f;
        scope.initialize(&provider, columns, {filled, both, outline});
    }
    void draw(CDrawContext* context) override
    {
        scope.renderScope(context, getViewSize());
        setDirty(false);
    }
    CView* newCopy() const override { return nullptr; }

    CNewScopeRenderer scope;
};

struct Window
{
    explicit Window(Provider& provider, double scale = 1.0) : view(new ScopeView(provider))
    {
        frame->setScale(scale);
        frame->addView(view);
        frame->idle();
    }
    ~Window()
    {
        frame->close();
        frame->forget();
    }
    std::string picture() const
    {
        IOSBitmap& bitmap = *frame->getFrameBitmap();
        return {reinterpret_cast<const char*>(bitmap.getPixelPtr()),
                bitmap.getHeight() * size_t(bitmap.getRowBytes())};
    }
    int brightness(int x, int y) const // of red, in the view's coordinates
    {
        IOSBitmap& bitmap = *frame->getFrameBitmap();
        return bitmap.getPixelPtr()[(5 + y) * bitmap.getRowBytes() + 4 * (5 + x) + 2];
    }

    CFrame* frame = new CFrame({0.0, 0.0, columns + 10.0, height + 10.0}, nullptr, nullptr);
    ScopeView* view;
};
}

// What changed is told, and painting that alone looks as if all had been painted.
TEST(CNewScopeRenderer, PaintsTheColumnsThatChangedLikeAllOfThem)
{
    Provider provider;
    std::mt19937 dice;
    const auto value = [&dice] { return float(dice() % 2401) / 1000.0f - 1.2f; };
    for (double scale = 1.0; scale < 3.0; scale += 0.25)
    {
        Window inParts(provider, scale), whole(provider, scale);
        for (int round = 0; round < 30; ++round)
        {
            const size_t from = dice() % columns, count = dice() % 12;
            for (auto& layer : provider.data)
                for (size_t i = from; i < from + count; ++i)
                {
                    const float a = value(), b = value();
                    layer[i % columns] = {std::min(a, b), std::max(a, b)};
                }
            double painted = 0.0;
            for (const auto& range : inParts.view->scope.fetch())
            {
                const CRect place = inParts.view->getViewSize();
                inParts.frame->addDirtyRect(
                    {place.left + range.first, place.top, place.left + range.last, place.bottom});
                painted += range.last - range.first;
            }
            EXPECT_LE(painted, double(count) + 26.0);
            inParts.frame->paint();
            whole.view->scope.fetch();
            whole.frame->setDirty(true);
            whole.frame->paint();
            ASSERT_TRUE(inParts.picture() == whole.picture()) << scale << ", round " << round;
        }
    }
}

TEST(CNewScopeRenderer, StaysInItsRectangleAndKeepsItsPictureWhileItsDataAreWritten)
{
    Provider provider;
    Window window(provider);
    for (int layer = 0; layer < 2; ++layer)
        window.view->scope.setLayerEnabled(layer, false); // the outline is left
    window.view->scope.setLayerEnabled(7, false);
    for (auto& point : provider.data[2])
        point = {-7.0f, std::numeric_limits<float>::infinity()};
    provider.data[2][60] = {NAN, NAN};
    provider.isBusy = true;
    EXPECT_TRUE(window.view->scope.fetch().empty());
    provider.isBusy = false;
    EXPECT_EQ(window.view->scope.fetch().size(), 1u);
    EXPECT_TRUE(window.view->scope.fetch().empty()) << "nothing has changed";
    window.frame->setDirty(true);
    window.frame->paint();
    EXPECT_GT(window.brightness(20, 0), 100) << "at the upper edge";
    EXPECT_GT(window.brightness(20, height - 1), 100) << "at the lower edge";
    EXPECT_LT(window.brightness(20, height / 2), 20) << "an outline is not filled";
    EXPECT_GT(window.brightness(60, height / 2), 100) << "what is no number is silence";
    EXPECT_EQ(window.brightness(20, -2), 0);
    EXPECT_EQ(window.brightness(20, height + 1), 0);
}
