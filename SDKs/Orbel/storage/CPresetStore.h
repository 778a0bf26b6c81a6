// SPDX-License-Identifier: GPL-3.0-or-later
// The container in which presets, banks and the state of a host's project travel: named chunks and texts,
// packed as a whole. The format stands in RecordContainer.h and CPresetStore.cpp.
//
// Writing: clear, setPresetID, setPresetName, any number of addChunk and addString, getPreset.
// Reading: setPresetID, setPreset, any number of getChunk and getString.
//
// What is read is untrusted input: a store that fails a check is refused, and one with a damaged record holds
// what stands ahead of it. Texts stay as they are, per cent signs and all.
#pragma once

#include "Orbel/storage/RecordContainer.h"
#include "Sonvex/String.h"

#include <vector>

namespace Orbel
{
// [window thread] [worker]  One thread at a time. A copy is a store of its own.
class CPresetStore
{
public:
    CPresetStore();

    static constexpr int kLongestID = 20;   // bytes
    static constexpr int kLongestName = 40; // bytes

    // The id that is written, and that a store to be read must have; "ppst" at first. Null is ignored, a
    // longer one is cut.
    void setPresetID(const char* id);
    const char* getPresetID() const { return presetID; }

    // The name that is written; while it is empty, none is written. Null is ignored, the empty text
    // gives "NoName". A name of more than 40 bytes is cut, never inside a character.
    void setPresetName(const char* name);
    const char* getPresetName() const { return presetName; }

    // Appends a copy of length bytes under that name, cut to 20 characters. Ignored for null, a length below
    // 0, or if the store would grow beyond 64 MiB.
    void addChunk(const char* name, const char* data, long length);
    // The same with a text and its NUL.
    void addString(const Sonvex::String& name, const Sonvex::String& value);

    // The whole store: its size in bytes, or 0 with null if nothing was added. The buffer stays the store's,
    // until the next call or clear. Each call appends the preset's name as a chunk, which stays.
    long getPreset(char** out);

    // Reads a store and forgets what was here, except the id. 0: taken; 2: refused, as it has a bad header or
    // another id. A store whose data cannot be unpacked is taken, and has no chunks. The store's name, if it
    // has one of at most 40 bytes, replaces the name here. The data is changed: it cannot be read twice.
    int setPreset(char* data, long size);
    // The same with a diagnosis. A store that would unpack to more than is allowed is refused.
    Diagnosis read(std::span<char> data, UnpackingAllowance& allowance);

    // The first chunk whose name agrees in its first 20 characters: its length, or 0 with null if there is
    // none. The bytes stay the store's, until the next call that changes it; they may be changed.
    long getChunk(const char* name, char** out) const;
    // The same as a text, which ends at its NUL or with the chunk; empty if there is none.
    Sonvex::String getString(const Sonvex::String& name) const;
    // The chunks that the last setPreset found.
    int getChunkCount() const { return chunks.getCount(); }

    // Forgets all chunks; id and name stay.
    void clear();

private:
    void takeStoredName();
    std::string_view findChunk(const char* name) const;

    char presetID[kLongestID + 1] = "ppst";
    char presetName[kLongestName + 1] = "";
    RecordContainer chunks;
    std::vector<char> output; // the last result of getPreset
};
}
