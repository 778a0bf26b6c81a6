// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/GalleryWindow.h"

#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "Tovrane/views/controls/MessagePresenter.h"
#include "Tovrane/views/controls/WindowScale.h"
#include "tools/gallery/GalleryPage.h"

#include <cmath>
#include <functional>

namespace Gallery
{
namespace
{
constexpr int idleMilliseconds = 25;
constexpr double titleHeight = 34.0;

int pixels(double units, double scale)
{
    return int(std::ceil(units * scale));
}

// Lies over a page's title and takes its clicks.
class PageTitle : public Tovra::CView
{
public:
    PageTitle(const Tovra::CRect& rect, std::function<void()> onTurn) : CView(rect), turn(std::move(onTurn))
    {
    }

    void draw(Tovra::CDrawContext*) override { setDirty(false); }
    Tovra::MouseEventResult onMouseDown(Tovra::CPoint&, const long&) override
    {
        turn();
        return Tovra::kMouseHandledNoMoves;
    }
    Tovra::CView* newCopy() const override { return new PageTitle(*this); }

private:
    std::function<void()> turn;
};
}

bool showWindow(std::size_t firstPage, double fixedScale)
{
    Tovra::PollRunLoop loop;
    Tovra::RunLoop::enter(loop);
    Tovra::useX11Frames();
    Tovra::useMessageViews();
    const auto window = Tovra::X11TopLevel::open("Gallery", int(pageWidth), int(pageHeight));
    if (window == nullptr)
        return false;
    window->onClose = [&] { loop.stop(); };

    std::size_t page = firstPage;
    std::unique_ptr<Show> show;
    std::unique_ptr<Tovra::WindowScale> scale;
    const auto turn = [&](bool& isTurned)
    {
        scale.reset();
        show.reset();
        show = std::make_unique<Show>(pages()[page % pages().size()], 1.0, window->parent());
        show->frame().addView(new PageTitle(Tovra::CRect(0.0, 0.0, pageWidth, titleHeight),
                                            [&]
                                            {
                                                ++page;
                                                isTurned = true;
                                            }));
        scale = std::make_unique<Tovra::WindowScale>(show->frame(),
                                                     [&](double pixelsPerUnit)
                                                     {
                                                         window->setSize(pixels(pageWidth, pixelsPerUnit),
                                                                         pixels(pageHeight, pixelsPerUnit));
                                                         show->frame().setScale(pixelsPerUnit);
                                                     });
        scale->setHostScale(fixedScale);
        isTurned = false;
    };
    bool isTurned = true; // the page changes after its own click has returned
    Tovra::RepeatingTimer idle;
    idle.start(idleMilliseconds,
               [&]
               {
                   if (!window->isOpen())
                       loop.stop();
                   if (isTurned)
                       turn(isTurned);
                   show->frame().idle();
               });
    loop.run();
    scale.reset();
    return true;
}
}
