// SPDX-License-Identifier: GPL-3.0-or-later
// The pages of the gallery, which show everything that the toolkit draws.
//
// The program shows or saves them; tests compare them with the pictures in tests/golden. A page is a tree of
// views. [window thread]
#pragma once

#include "Tovrane/views/tree/CFrame.h"

#include <memory>
#include <string>
#include <vector>

namespace Gallery
{
// In units.
constexpr double pageWidth = 640.0;
constexpr double pageHeight = 420.0;

struct Page
{
    const char* name;  // of the golden picture
    const char* title; // shown on it
    void (*fill)(Tovra::CFrame& frame);
};

const std::vector<Page>& pages();
// By its name, or its number from 1; pages().size() for none.
std::size_t findPage(const std::string& nameOrNumber);

// A frame that shows a page, with scale pixels to a unit. parent is the window to open it in; null only draws
// the picture.
class Show
{
public:
    explicit Show(const Page& page, double scale = 1.0, void* parent = nullptr);
    ~Show();
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;

    Tovra::CFrame& frame();
    // About what is under the mouse.
    const std::string& readOut() const;
    // Paints what is dirty.
    Tovra::IOSBitmap& picture();

private:
    class PageFrame;
    PageFrame* shown;
};

// The pages by file.
void fillShapes(Tovra::CFrame& frame);
void fillTexts(Tovra::CFrame& frame);
void fillGradients(Tovra::CFrame& frame);
void fillBlends(Tovra::CFrame& frame);
void fillPictures(Tovra::CFrame& frame);
void fillViews(Tovra::CFrame& frame);
void fillMenus(Tovra::CFrame& frame);
void fillControls(Tovra::CFrame& frame);
void fillMessages(Tovra::CFrame& frame);
}
