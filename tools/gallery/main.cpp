// Shows the pages of the gallery in a window, or saves them as PNG files.
#include "Tovrane/draw/IOSBitmap.h"
#include "Tovrane/platform/headless/HeadlessFrame.h"
#include "tools/gallery/GalleryPage.h"
#include "tools/gallery/GalleryWindow.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <png.h>

// The pages below one another, as one picture.
static bool save(const std::string& path, size_t first, size_t last)
{
    const auto width = unsigned(Gallery::pageWidth), height = unsigned(Gallery::pageHeight);
    std::vector<unsigned char> pixels;
    for (size_t i = first; i <= last; ++i)
    {
        Gallery::Show show(Gallery::pages()[i]);
        Tovra::IOSBitmap& picture = show.picture();
        pixels.insert(pixels.end(), picture.getPixelPtr(),
                      picture.getPixelPtr() + size_t(width) * height * 4);
    }
    for (size_t alpha = 3; alpha < pixels.size(); alpha += 4)
        pixels[alpha] = 255; // a window has none
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    png.width = width;
    png.height = height * unsigned(last - first + 1);
    png.format = PNG_FORMAT_BGRA;
    return png_image_write_to_file(&png, path.c_str(), 0, pixels.data(), 0, nullptr) != 0;
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
