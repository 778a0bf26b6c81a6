// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/gallery/GalleryPage.h"

#include "Tovrane/draw/IOSBitmap.h"
#include "tools/gallery/Sketch.h"

namespace Gallery
{
const std::vector<Page>& pages()
{
    static const std::vector<Page> all = {
        {"shapes", "Shapes and lines", fillShapes},
        {"texts", "Text", fillTexts},
        {"gradients", "Gradients", fillGradients},
        {"blends", "Blend modes", fillBlends},
        {"pictures", "Pictures, filters and blur", fillPictures},
        {"views", "Nested and clipped views", fillViews},
        {"menus", "Menus and text fields", fillMenus},
        {"controls", "Controls", fillControls},
        {"messages", "Messages and questions", fillMessages},
    };
    return all;
}

std::size_t findPage(const std::string& nameOrNumber)
{
    for (std::size_t i = 0; i < pages().size(); ++i)
        if (nameOrNumber == pages()[i].name || nameOrNumber == std::to_string(i + 1))
            return i;
    return pages().size();
}

class Show::PageFrame : public Tovra::CFrame
{
public:
    using CFrame::CFrame;
    void setDataReadOutText(const char* text) override { readOut = text; }
    std::string readOut;
};

Show::Show(const Page& page, double scale, void* parent)
    : shown(new PageFrame(Tovra::CRect(0.0, 0.0, pageWidth, pageHeight), parent, nullptr))
{
    shown->setScale(scale);
    shown->setBackgroundColor(ground);
    page.fill(*shown);
    shown->addView(
        new Sketch(Tovra::CRect(0.0, 0.0, pageWidth, 34.0),
                   [title = page.title](Tovra::CDrawContext& context) {
                       drawText(context, title, {16, 8, 500, 30}, Tovra::kTextLeft, accent, 15.0, 1);
                   }));
}

Show::~Show()
{
    shown->close();
    shown->forget();
}

Tovra::CFrame& Show::frame()
{
    return *shown;
}

const std::string& Show::readOut() const
{
    return shown->readOut;
}

Tovra::IOSBitmap& Show::picture()
{
    shown->idle();
    return *shown->getFrameBitmap();
}
}
