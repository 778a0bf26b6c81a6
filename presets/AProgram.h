// SPDX-License-Identifier: GPL-3.0-or-later
// The oldest form of a preset: a program of the two-band product, as that product kept it in memory.
//
//   one program, 184 bytes           at 4 the tempo, at 8 the values, at 156 the name
//   bank without tempo, 6728 bytes   from 8 on 32 programs of 176 bytes: values, name
//   bank with tempo, 6860 bytes      from 8 on 32 programs of 180 bytes: values, name, tempo
//
// Nothing but the exact size tells these forms, and what follows a bank's programs is not used. The values
// may be in either byte order. Only the values themselves tell which: in the wrong order some lie outside 0
// to 1. The tempo is little-endian in any case.
#pragma once

#include <string>

class CPresetConverterCallback;

struct AProgram
{
    static constexpr int kNumValues = 37;
    static constexpr int kNameSize = 28;

    float values[kNumValues]; // 0 to 1; the first 29 have a meaning
    char name[kNameSize];     // without a NUL if it fills the field
    float tempo;              // beats a minute; 0 means 128
};

namespace OLDPRESET
{
// [any thread]

constexpr long kSingleProgramSize = 184; // bytes
bool isRawForm(long size);

// Hands the programs of a raw form to the callback as chunks of the tagged form: one, or all 32 of a bank
// with their places. Answers 0, and does nothing, if the size is not that of such a form.
int setChunkOld(const void* data, int size, bool single, CPresetConverterCallback* callback);

// The program as a chunk of the tagged form. One in the other byte order has its name's words reversed, too,
// so that it cannot be read any more.
std::string createNewTypeChunk(AProgram program);
}
