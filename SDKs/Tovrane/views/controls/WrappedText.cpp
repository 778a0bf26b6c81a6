// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/views/controls/WrappedText.h"

#include "CORE/Utf8.h"

#include <algorithm>

namespace Tovra
{
namespace
{
constexpr char ellipsis[] = "\xE2\x80\xA6";

// Line breaks are "\n" only, and nothing else is a control character.
std::string plainText(const std::string& text)
{
    const std::string valid = Core::Utf8::replaceInvalid(text);
    std::string result;
    for (std::size_t at = 0; at < valid.size();)
    {
        const Core::Utf8::CodePoint next = Core::Utf8::decode(std::string_view(valid).substr(at));
        const bool isPairedReturn = next.value == '\r' && valid.compare(at, 2, "\r\n") == 0;
        if (next.value == '\n' || !Core::Utf8::isControl(next.value))
            result.append(valid, at, next.length);
        else if (!isPairedReturn)
            result += ' ';
        at += next.length;
    }
    return result;
}

// The bytes at the front of text that fit, whole characters and at least one.
std::size_t fittingBytes(const std::string& text, double width, const TextMeasure& measure)
{
    std::size_t end = Core::Utf8::advance(text, 0);
    while (end < text.size())
    {
        const std::size_t longer = Core::Utf8::advance(text, end);
        if (measure(text.substr(0, longer)) > width)
            break;
        end = longer;
    }
    return end;
}

class Wrapper
{
public:
    Wrapper(double lineWidth, const TextMeasure& by) : width(lineWidth), measure(by) {}

    void addParagraph(const std::string& text)
    {
        std::string line;
        for (std::size_t at = 0; at < text.size();)
        {
            const std::size_t word = std::min(text.find_first_not_of(' ', at), text.size());
            const std::size_t end = std::min(text.find(' ', word), text.size());
            if (measure(line + text.substr(at, end - at)) <= width)
                line += text.substr(at, end - at);
            else
            {
                if (!line.empty())
                    lines.push_back(line);
                line = withoutFullLines(text.substr(word, end - word));
            }
            at = end;
        }
        lines.push_back(line);
    }

    std::vector<std::string> lines;

private:
    // Makes lines of a word as long as it is too long for one, and returns what is left of it.
    std::string withoutFullLines(std::string word)
    {
        while (measure(word) > width)
        {
            const std::size_t bytes = fittingBytes(word, width, measure);
            if (bytes == word.size())
                break;
            lines.push_back(word.substr(0, bytes));
            word.erase(0, bytes);
        }
        return word;
    }

    const double width;
    const TextMeasure& measure;
};
}

std::vector<std::string> wrapText(const std::string& text, double width, const TextMeasure& measure)
{
    const std::string plain = plainText(text);
    Wrapper wrapper(width, measure);
    for (std::size_t start = 0; start <= plain.size();)
    {
        const std::size_t end = std::min(plain.find('\n', start), plain.size());
        wrapper.addParagraph(plain.substr(start, end - start));
        start = end + 1;
    }
    while (!wrapper.lines.empty() && wrapper.lines.back().empty())
        wrapper.lines.pop_back();
    return wrapper.lines;
}

std::string shortenText(const std::string& text, double width, const TextMeasure& measure)
{
    std::string line = plainText(text);
    std::replace(line.begin(), line.end(), '\n', ' ');
    if (measure(line) <= width)
        return line;
    while (!line.empty() && measure(line + ellipsis) > width)
        line.resize(Core::Utf8::stepBack(line, line.size()));
    return line + ellipsis;
}
}
