// A picture that is drawn once and saved as PNG: anti-aliased areas and lines, and small type. Points are
// in pixels from the upper left corner.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace lodex
{
struct Colour
{
    uint8_t red, green, blue;
    uint8_t alpha = 255;
};

struct Point
{
    double x, y;
};

struct Box
{
    double left, top, right, bottom;
};

enum class TextSize
{
    small,
    normal,
    title
};

enum class TextAlign
{
    left,
    centre,
    right
};

class Canvas
{
public:
    Canvas(int width, int height, Colour background);
    ~Canvas();

    void fill(const std::vector<Point>& outline, Colour colour);
    // From one colour at the line y = from to another at y = to.
    void fillFading(const std::vector<Point>& outline, double from, Colour atFrom, double to, Colour atTo);
    void fillRounded(const Box& box, double radius, Colour colour);
    void stroke(const std::vector<Point>& line, double width, Colour colour);

    // baseline.x is the text's left, middle or right. Characters beyond ASCII print as "?".
    void text(Point baseline, std::string_view words, TextSize size, Colour colour,
              TextAlign align = TextAlign::left);
    double textWidth(std::string_view words, TextSize size) const;

    std::vector<uint8_t> png() const;

private:
    struct Renderer;
    std::unique_ptr<Renderer> renderer;
};
}
