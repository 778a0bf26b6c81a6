// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/GalleryScript.h"

#include "Tovrane/views/controls/MessagePresenter.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/shot/ShotPlayer.h"

namespace Gallery
{
namespace
{
class PageOwner : public lodex::ShotOwner
{
public:
    PageOwner(const Page& page, double scale) : show(page, scale) {}
    Tovra::CFrame* frame() override { return &show.frame(); }
    std::string readOut() const override { return show.readOut(); }

private:
    Show show;
};
}

std::string playScript(std::size_t page, double scale, const std::string& path)
{
    const auto steps = lodex::readShotScript(path);
    Tovra::useMessageViews();
    lodex::VirtualTime time;
    PageOwner owner(pages()[page], scale);
    lodex::ShotPlayer player(owner, time);
    player.play(steps, path);
    return toJson(player.record()).dump(2);
}
}
