// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotWords.h"

#include "tools/common/Text.h"
#include "tools/common/ToolError.h"

namespace lodex
{
static bool isEndOfQuotes(std::string_view rest)
{
    return rest.size() == 1 || rest[1] == ' ' || rest[1] == '\t';
}

// text begins with a quote.
static std::string takeQuoted(std::string_view& text)
{
    std::string result;
    for (size_t i = 1; i < text.size(); ++i)
    {
        const bool isEscape =
            text[i] == '\\' && i + 1 < text.size() && (text[i + 1] == '"' || text[i + 1] == '\\');
        if (isEscape)
            result += text[++i];
        else if (text[i] == '"' && isEndOfQuotes(text.substr(i)))
        {
            text = trimmed(text.substr(i + 1));
            return result;
        }
        else
            result += text[i];
    }
    throw ToolError("a quote that is not closed: " + printable(text));
}

std::vector<ShotWord> splitShotWords(std::string_view text)
{
    std::vector<ShotWord> words;
    for (text = trimmed(text); !text.empty() && text.front() != '#';)
        if (text.front() == '"')
            words.push_back({takeQuoted(text), true});
        else
            words.push_back({std::string(takeWord(text)), false});
    return words;
}
}
