// SPDX-License-Identifier: GPL-3.0-or-later
// Shows the pages of the gallery in a window, saves them as PNG files, or drives one by a script.
#include "Tovrane/draw/PNGWriter.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "tools/common/OutputFile.h"
#include "tools/common/ToolError.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/GalleryScript.h"
#include "tools/gallery/GalleryWindow.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

// The pages below one another, as one picture.
static void save(const std::string& path, size_t first, size_t last, double scale)
{
    lodex::OutputFile out(path);
    std::vector<std::unique_ptr<Gallery::Show>> shows;
    std::vector<Tovra::IOSBitmap*> pictures;
    for (size_t i = first; i <= last; ++i)
    {
        shows.push_back(std::make_unique<Gallery::Show>(Gallery::pages()[i], scale));
        pictures.push_back(&shows.back()->picture());
    }
    const std::vector<unsigned char> file = Tovra::writePNG(pictures);
    if (file.empty())
        throw lodex::ToolError("there is not enough memory for the picture");
    out.write(file.data(), file.size());
    out.commit();
}

struct Wanted
{
    std::string png;
    std::string script;
    std::string page; // a name or a number; empty for all
    double scale = 0.0;
};

static void run(const Wanted& wanted)
{
    const size_t count = Gallery::pages().size();
    const size_t page = Gallery::findPage(wanted.page);
    const double scale = wanted.scale > 0.0 ? wanted.scale : 1.0;
    Tovra::useHeadlessFrames();
    if (!wanted.script.empty())
        std::puts(
            Gallery::playScript(page < count ? page : Gallery::findPage("controls"), scale, wanted.script)
                .c_str());
    else if (!wanted.png.empty())
        save(wanted.png, page < count ? page : 0, page < count ? page : count - 1, scale);
    else if (!Gallery::showWindow(page % count, wanted.scale))
        throw lodex::ToolError("there is no display; --png writes a file");
}

static std::string checkPage(const std::string& page)
{
    std::string names;
    for (const Gallery::Page& one : Gallery::pages())
        names += std::string(names.empty() ? "" : ", ") + one.name;
    return Gallery::findPage(page) < Gallery::pages().size() ? ""
                                                             : "no page " + page + "; there are " + names;
}

int main(int argc, char** argv)
{
    CLI::App app("Everything that the toolkit draws, page by page.\n"
                 "Examples: tovra_gallery --png out.png --page 3\n"
                 "          tovra_gallery --script drag.txt --page controls --scale 2");
    Wanted wanted;
    auto* const png = app.add_option(
        "--png", wanted.png,
        "the file to write; without it a window opens, in which a click on the title turns the page");
    app.add_option("--script", wanted.script,
                   "what a user does with a page, one step a line (tools/shot/ShotScript.h says which); its "
                   "\"shot FILE\" steps write pictures, and what was asked and shown is printed as JSON")
        ->excludes(png);
    app.add_option("--page", wanted.page,
                   "a page by name or number: the one of the file, the window's first, or the script's; "
                   "without it all "
                   "of them in a file, below one another, and \"controls\" for a script")
        ->check(CLI::Validator(checkPage, "PAGE"));
    app.add_option("--scale", wanted.scale, "pixels to a unit; without it 1, in a window the desktop's")
        ->check(CLI::Range(0.25, 8.0));
    CLI11_PARSE(app, argc, argv);
    try
    {
        run(wanted);
        return 0;
    }
    catch (const lodex::ToolError& error)
    {
        std::fprintf(stderr, "tovra_gallery: %s\n", error.what());
        return 2;
    }
}
