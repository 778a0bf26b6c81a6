// SPDX-License-Identifier: GPL-3.0-or-later
// Presets of the two-band product, in whatever older form they arrive from projects and files: what they are
// known by, and the way from the tagged forms to stores of today.
//
// A converted store has all parameters of that product, under its ids; a reader takes what it still knows.
// Keys were never kept: a chunk whose records are enciphered counts as one without records. What comes in is
// untrusted input: records and entries count as far as they are wholly there.
#pragma once

#include "Orbel/storage/Diagnosis.h"

class CPresetConverterCallback;

namespace OLDPRESET
{
// [any thread]

constexpr int kMostPresets = 1024; // that are taken from a bank; those of the product hold 32

// By the exact size of a raw form, else by the id as a whole text with its end.
bool isOldPresetOrBank(const char* data, long size);
bool isOldBank(const char* data, long size);
bool isOldPreset(const char* data, long size);

// The preset as a store, to the callback, which may be null: with the values at creation for what has no
// record, and also with nothing but these if the version is too low. Refused if the header is cut short.
Orbel::Diagnosis convertPresetChunk_v2(const char* data, long size, CPresetConverterCallback* callback);

// The same for each entry of a bank. The callback hears the place of each entry before its store.
Orbel::Diagnosis convertBankChunk_v2(const char* data, long size, CPresetConverterCallback* callback);
}
