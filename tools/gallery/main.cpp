// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the pages of the gallery in a window, or saves them as PNG files.
#include "Tovrane/draw/CMACBitmap.h"
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/GalleryWindow.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <fstream>

// The pages below one another, as one picture.
static bool save(const std::string& path, size_t first, size_t last)
{
    Tovra::CMACBitmap all;
    if (!all.setSize(unsigned(Gallery::pageWidth),
                     unsigned(Gallery::pageHeight) * unsigned(last - first + 1)))
        return false;
    unsigned char* to = all.getPixelPtr();
    for (size_t i = first; i <= last; ++i)
    {
        Gallery::Show show(Gallery::pages()[i]);
        Tovra::IOSBitmap& picture = show.picture();
        to = std::copy_n(picture.getPixelPtr(), picture.getTotalBytes(), to);
    }
    const std::vector<unsigned char> file = Tovra::writePNG(all);
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(file.data()), std::streamsize(file.size()));
    return !file.empty() && bool(out.flush());
}

int main(int argc, char** argv)
{
    const size_t count = Gallery::pages().size();
    CLI::App app(
        "Everything that the toolkit draws, page by page.\nExample: tovra_gallery --png out.png --page 3");
    std::string path;
    size_t page = 0;
    app.add_option(
        "--png", path,
        "the file to write; without it a window opens, in which a click on the title turns the page");
    app.add_option("--page", page,
                   "one page of the file, or the window's first; without it all of them, below one another")
        ->check(CLI::Range(size_t(1), count));
    CLI11_PARSE(app, argc, argv);
    Tovra::useHeadlessFrames();

    if (path.empty())
    {
        if (Gallery::showWindow(page > 0 ? page - 1 : 0))
            return 0;
        std::fprintf(stderr, "tovra_gallery: there is no display; --png writes a file\n");
        return 2;
    }
    if (save(path, page > 0 ? page - 1 : 0, page > 0 ? page - 1 : count - 1))
        return 0;
    std::fprintf(stderr, "tovra_gallery: cannot write %s\n", path.c_str());
    return 2;
}
