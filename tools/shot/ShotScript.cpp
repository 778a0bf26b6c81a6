// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/shot/ShotScript.h"

#include "CORE/Utf8.h"
#include "Tovrane/window/MouseEvents.h"
#include "tools/common/InputFile.h"
#include "tools/common/Text.h"
#include "tools/common/ToolError.h"
#include "tools/shot/ShotWords.h"

#include <algorithm>

namespace lodex
{
namespace
{
using Kind = ShotStep::Kind;
using Words = std::vector<ShotWord>;

constexpr double farthest = 1e6;           // units
constexpr double widest = 1e3;             // notches
constexpr std::int64_t longest = 86400000; // milliseconds

template <typename Value>
struct Named
{
    std::string_view name;
    Value value;
};

constexpr Named<long> buttons[] = {
    {"left", Tovra::kButtonLeft}, {"middle", Tovra::kButtonMiddle}, {"right", Tovra::kButtonRight}};
constexpr Named<long> modifierNames[] = {{"shift", Tovra::kModShift},
                                         {"alt", Tovra::kModAlt},
                                         {"control", Tovra::kModControl},
                                         {"command", Tovra::kModCommand}};
constexpr Named<Tovra::VirtualKey> keys[] = {
    {"up", Tovra::kVirtualUp},         {"down", Tovra::kVirtualDown},
    {"left", Tovra::kVirtualLeft},     {"right", Tovra::kVirtualRight},
    {"return", Tovra::kVirtualReturn}, {"escape", Tovra::kVirtualEscape},
    {"tab", Tovra::kVirtualTab},       {"backspace", Tovra::kVirtualBackspace},
    {"delete", Tovra::kVirtualDelete}, {"home", Tovra::kVirtualHome},
    {"end", Tovra::kVirtualEnd}};

template <typename Table>
auto valueOf(const Table& table, std::string_view name, const char* what)
{
    std::string names;
    for (const auto& row : table)
    {
        if (row.name == name)
            return row.value;
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    }
    throw ToolError("no " + std::string(what) + ' ' + inQuotes(name) + "; there are " + names);
}

// The arguments of the steps. Their number has been checked.

void readPlace(ShotStep& step, const Words& words)
{
    step.x = numberInRange("X", words[0].text, -farthest, farthest);
    step.y = numberInRange("Y", words[1].text, -farthest, farthest);
    if (step.kind == Kind::wheel)
        step.amount = numberInRange("DISTANCE", words[2].text, -widest, widest);
}

void readButton(ShotStep& step, const Words& words)
{
    step.mouse = valueOf(buttons, words[0].text, "button");
    if (step.kind == Kind::doubleClick && step.mouse != Tovra::kButtonLeft)
        throw ToolError("expected \"double left\"");
}

void readModifiers(ShotStep& step, const Words& words)
{
    if (words.size() == 1 && words[0].text == "none")
        return;
    std::string all;
    for (const ShotWord& word : words)
        all += word.text;
    for (size_t start = 0; start <= all.size();)
    {
        const size_t end = std::min(all.find(',', start), all.size());
        step.mouse |= valueOf(modifierNames, std::string_view(all).substr(start, end - start), "modifier");
        start = end + 1;
    }
}

void readKey(ShotStep& step, const Words& words)
{
    const std::string& name = words[0].text;
    if (name.empty())
        throw ToolError("a key has a name");
    const Core::Utf8::CodePoint first = Core::Utf8::decode(name);
    if (first.length == name.size())
        step.key.character = first.value;
    else
        step.key.virtualKey = valueOf(keys, name, "key");
}

void readTitles(ShotStep& step, const Words& words)
{
    if (words.size() == 1 && !words[0].isQuoted && words[0].text == "-")
        return;
    for (const ShotWord& word : words)
    {
        if (!word.isQuoted)
            throw ToolError("a row stands in quotes, not as " + printable(word.text));
        step.titles.push_back(word.text);
    }
}

void readAnswer(ShotStep& step, const Words& words)
{
    constexpr Named<double> answers[] = {{"yes", 1.0}, {"no", 0.0}};
    step.amount = valueOf(answers, words[0].text, "answer");
}

void readMilliseconds(ShotStep& step, const Words& words)
{
    step.amount = double(wholeNumberInRange("MS", words[0].text, 0, longest));
}

void readPlaying(ShotStep& step, const Words& words)
{
    step.text = words[0].text;
    step.amount = numberInRange("SECONDS", words[1].text, 0.0, double(longest) / 1000.0);
}

void readTempo(ShotStep& step, const Words& words)
{
    step.amount = numberInRange("B", words[0].text, 0.0, 1e6);
}

void readSet(ShotStep& step, const Words& words)
{
    step.id = words[0].text;
    step.text = words[1].text;
}

void readText(ShotStep& step, const Words& words)
{
    step.text = words[0].text;
}

void readNothing(ShotStep&, const Words&) {}

struct Row
{
    std::string_view word;
    Kind kind;
    const char* arguments; // how a message names them
    size_t fewest;
    size_t most; // words
    void (*read)(ShotStep&, const Words&);
};
constexpr size_t any = 1000;

constexpr Row rows[] = {
    {"move", Kind::move, "X Y", 2, 2, readPlace},
    {"leave", Kind::leave, "", 0, 0, readNothing},
    {"press", Kind::press, "left|middle|right", 1, 1, readButton},
    {"release", Kind::release, "left|middle|right", 1, 1, readButton},
    {"double", Kind::doubleClick, "left", 1, 1, readButton},
    {"modifiers", Kind::modifiers, "none|shift[,alt,control,command]", 1, any, readModifiers},
    {"wheel", Kind::wheel, "X Y DISTANCE", 3, 3, readPlace},
    {"key", Kind::key, "NAME", 1, 1, readKey},
    {"type", Kind::type, "TEXT", 1, 1, readText},
    {"choose", Kind::choose, "\"ROW\" [\"ROW\"...], or choose -", 1, any, readTitles},
    {"answer", Kind::answer, "yes|no", 1, 1, readAnswer},
    {"file", Kind::file, "PATH, or file -", 1, 1, readText},
    {"idle", Kind::idle, "MS", 1, 1, readMilliseconds},
    {"play", Kind::play, "FILE SECONDS", 2, 2, readPlaying},
    {"bpm", Kind::bpm, "B", 1, 1, readTempo},
    {"set", Kind::set, "ID VALUE", 2, 2, readSet},
    {"timebase", Kind::timeBase, "NAME", 1, 1, readText},
    {"shot", Kind::shot, "FILE", 1, 1, readText},
};

const Row& rowOf(std::string_view word)
{
    for (const Row& row : rows)
        if (row.word == word)
            return row;
    std::string known;
    for (const Row& row : rows)
        known += (known.empty() ? "" : ", ") + std::string(row.word);
    throw ToolError("no step " + inQuotes(word) + "; there are " + known);
}

// The rest of the line as it stands, after one blank.
Words restOfLine(std::string_view line, Kind kind)
{
    if (line.size() < 2)
        return {};
    std::string rest(line.substr(1));
    if (kind == Kind::file)
        rest = trimmed(rest);
    return rest.empty() ? Words() : Words{{rest, false}};
}

ShotStep parseStep(std::string_view line)
{
    const std::string_view word = line.substr(0, line.find_first_of(" \t"));
    const Row& row = rowOf(word);
    ShotStep step;
    step.kind = row.kind;
    line.remove_prefix(word.size());
    const bool isVerbatim = row.kind == Kind::type || row.kind == Kind::file;
    const Words words = isVerbatim ? restOfLine(line, row.kind) : splitShotWords(line);
    if (words.size() < row.fewest || words.size() > row.most)
        throw ToolError("expected " + std::string(trimmed(std::string(row.word) + ' ' + row.arguments)));
    row.read(step, words);
    if (step.kind == Kind::file && step.text == "-")
        step.text.clear();
    return step;
}

void requireText(std::string_view line)
{
    while (!line.empty())
    {
        const Core::Utf8::CodePoint next = Core::Utf8::decode(line);
        if (next.form != Core::Utf8::Form::valid)
            throw ToolError("the line is not UTF-8");
        if (Core::Utf8::isControl(next.value) && next.value != '\t')
            throw ToolError("the line has a control character");
        line.remove_prefix(next.length);
    }
}
}

std::vector<ShotStep> parseShotScript(std::string_view script, const std::string& name)
{
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (script.starts_with(byteOrderMark))
        script.remove_prefix(byteOrderMark.size());
    std::vector<ShotStep> steps;
    for (int number = 1; !script.empty(); ++number)
    {
        std::string_view line = script.substr(0, script.find('\n'));
        script.remove_prefix(std::min(line.size() + 1, script.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (line.empty() || line.front() == '#')
            continue;
        try
        {
            requireText(line);
            steps.push_back(parseStep(line));
            steps.back().line = number;
        }
        catch (const ToolError& error)
        {
            throw ToolError(printable(name) + ':' + std::to_string(number) + ": " + error.what());
        }
    }
    return steps;
}

std::vector<ShotStep> readShotScript(const std::string& path)
{
    std::string content;
    try
    {
        content = readInputFile(path);
    }
    catch (const ToolError& reason)
    {
        throw cannotRead(path, reason);
    }
    return parseShotScript(content, path);
}
}
