// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the pages of the gallery in a window, or saves them as PNG files.
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/GalleryWindow.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

// The pages below one another, as one picture.
static bool save(const std::string& path, size_t first, size_t last, double scale)
{
    std::vector<std::unique_ptr<Gallery::Show>> shows;
    std::vector<Tovra::IOSBitmap*> pictures;
    for (size_t i = first; i <= last; ++i)
    {
        shows.push_back(std::make_unique<Gallery::Show>(Gallery::pages()[i], scale));
        pictures.push_back(&shows.back()->picture());
    }
    const std::vector<unsigned char> file = Tovra::writePNG(pictures);
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
    double scale = 0.0;
    app.add_option("--scale", scale, "pixels to a unit; without it 1 for a file, the desktop's for a window")
        ->check(CLI::Range(0.25, 8.0));
    CLI11_PARSE(app, argc, argv);
    Tovra::useHeadlessFrames();

    if (path.empty())
    {
        if (Gallery::showWindow(page > 0 ? page - 1 : 0, scale))
            return 0;
        std::fprintf(stderr, "tovra_gallery: there is no display; --png writes a file\n");
        return 2;
    }
    if (save(path, page > 0 ? page - 1 : 0, page > 0 ? page - 1 : count - 1, scale > 0.0 ? scale : 1.0))
        return 0;
    std::fprintf(stderr, "tovra_gallery: cannot write %s\n", path.c_str());
    return 2;
}
