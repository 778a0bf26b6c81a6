// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/storage/CPresetStore.h"

#include "CORE/Utf8.h"

#include <algorithm>
#include <cstring>

namespace Orbel
{
namespace
{
using namespace std::literals;

constexpr ContainerLayout storeLayout = {
    .idSize = CPresetStore::kLongestID,
    .fields = 24,
    .size = 44,
    .scrambled = false,
    .tag = "KCnk\0"sv,
    .nameSize = 20,
    .recordFields = 28,
    .recordSize = 40,
};

constexpr char nameChunk[] = "PresetName"; // the last record of a store that has a name: the name and its NUL
constexpr char noName[] = "NoName";
constexpr int refusedStore = 2; // the contract's answer

// The text up to its NUL or `length` bytes. Null counts as empty.
std::string_view cut(const char* text, size_t length)
{
    return text ? std::string_view(text, strnlen(text, length)) : std::string_view();
}

// The text has room in the field, its NUL included.
template <size_t size>
void copyText(char (&to)[size], std::string_view text)
{
    const std::string copy(text); // it may lie in the field itself
    std::fill(copy.copy(to, size - 1) + to, to + size, '\0');
}
}

CPresetStore::CPresetStore() : chunks(storeLayout) {}

void CPresetStore::setPresetID(const char* id)
{
    if (id)
        copyText(presetID, cut(id, kLongestID));
}

void CPresetStore::setPresetName(const char* name)
{
    if (name)
        copyText(presetName, Core::Utf8::cut(*name ? name : noName, kLongestName));
}

void CPresetStore::addChunk(const char* name, const char* data, long length)
{
    if (name && data && length >= 0)
        chunks.append(cut(name, storeLayout.nameSize), {data, size_t(length)});
}

void CPresetStore::addString(const Sonvex::String& name, const Sonvex::String& value)
{
    addChunk(name.c_str(), value.c_str(), long(value.size() + 1));
}

long CPresetStore::getPreset(char** out)
{
    output.clear();
    *out = nullptr;
    if (chunks.empty())
        return 0;
    if (*presetName)
        addString(nameChunk, presetName);
    output = chunks.image(presetID);
    *out = output.data();
    return long(output.size());
}

int CPresetStore::setPreset(char* data, long size)
{
    UnpackingAllowance any;
    return read({data, data && size > 0 ? size_t(size) : 0}, any).taken ? 0 : refusedStore;
}

Diagnosis CPresetStore::read(std::span<char> data, UnpackingAllowance& allowance)
{
    Diagnosis result = chunks.read(presetID, data, allowance);
    std::vector<char>().swap(output); // not earlier: data may point into it
    takeStoredName();
    return result;
}

void CPresetStore::takeStoredName()
{
    const auto stored = findChunk(nameChunk);
    if (!stored.data())
        return;
    const std::string name(cut(stored.data(), stored.size()));
    if (name.size() <= kLongestName)
        setPresetName(name.c_str());
}

std::string_view CPresetStore::findChunk(const char* name) const
{
    return name ? chunks.find(cut(name, storeLayout.nameSize)) : std::string_view();
}

long CPresetStore::getChunk(const char* name, char** out) const
{
    const auto found = findChunk(name);
    *out = const_cast<char*>(found.data()); // a nested store is unfolded where it stands
    return long(found.size());
}

Sonvex::String CPresetStore::getString(const Sonvex::String& name) const
{
    const auto found = findChunk(name.c_str());
    return std::string(cut(found.data(), found.size()));
}

void CPresetStore::clear()
{
    chunks.clear();
    std::vector<char>().swap(output);
}
}
