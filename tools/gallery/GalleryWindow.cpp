// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/GalleryWindow.h"

#include "Tovrane/base/PollRunLoop.h"
#include "Tovrane/platform/x11/frame/X11Frame.h"
#include "Tovrane/platform/x11/frame/X11TopLevel.h"
#include "tools/gallery/GalleryPage.h"

#include <cmath>
#include <functional>

namespace Gallery
{
namespace
{
constexpr int idleMilliseconds = 25;
constexpr double titleHeight = 34.0;

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

bool showWindow(std::size_t firstPage, double scale)
{
    Tovra::PollRunLoop loop;
    Tovra::RunLoop::enter(loop);
    Tovra::useX11Frames();
    const auto window = Tovra::X11TopLevel::open("Gallery", int(std::ceil(pageWidth * scale)),
                                                 int(std::ceil(pageHeight * scale)));
    if (window == nullptr)
        return false;
    window->onClose = [&] { loop.stop(); };

    std::size_t page = firstPage;
    std::unique_ptr<Show> show;
    bool isTurned = true; // the page changes after its own click has returned
    Tovra::RepeatingTimer idle;
    idle.start(idleMilliseconds,
               [&]
               {
                   if (!window->isOpen())
                       loop.stop();
                   if (isTurned)
                   {
                       show.reset();
                       show = std::make_unique<Show>(pages()[page % pages().size()], scale, window->parent());
                       show->frame().addView(new PageTitle(Tovra::CRect(0.0, 0.0, pageWidth, titleHeight),
                                                           [&]
                                                           {
                                                               ++page;
                                                               isTurned = true;
                                                           }));
                       isTurned = false;
                   }
                   show->frame().idle();
               });
    loop.run();
    return true;
}
}
