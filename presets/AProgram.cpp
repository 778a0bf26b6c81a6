// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/AProgram.h"

#include "CORE/ForeignData.h"
#include "effect/parameters/DKS.h"
#include "presets/CPresetConverterCallback.h"
#include "presets/OlderChunks.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <optional>

namespace OLDPRESET
{
namespace
{
constexpr int numPrograms = 32; // of a bank
constexpr float tempoOfNone = 128.0f;
constexpr size_t writtenSize = 3304; // of a chunk; zeros follow its records
constexpr size_t writtenHeaderSize = chunk::records;
constexpr size_t writtenKeyBlockSize = 512;

struct RawForm
{
    long size;
    bool single;
    size_t values; // offset of those of the first program
    size_t stride;
    std::optional<size_t> tempo; // offset of the first program's
};

constexpr RawForm rawForms[] = {
    {kSingleProgramSize, true, 8, 0, 4},
    {6728, false, 8, 176, std::nullopt},
    {6860, false, 8, 180, 184},
};

const RawForm* findRawForm(long size)
{
    const auto found = std::find_if(std::begin(rawForms), std::end(rawForms),
                                    [=](const RawForm& form) { return form.size == size; });
    return found == std::end(rawForms) ? nullptr : found;
}

// How a stored value, v from 0 to 1, becomes a real one.
enum Rule
{
    scaled,   // v times the factor
    gain,     // -20 to 20 dB
    bend,     // 8 to 1 in the lower half, -1 to -8 in the upper: none is 0
    selection // 0, 1, 2 and at the very end 3
};

struct Mapping
{
    Rule rule;
    float factor = 1.0f;
};

constexpr Mapping mappings[DKS::kNumChunkParameters] = {
    {scaled, 22500.0f},   // SPLIT_FREQ
    {scaled, 1.4125376f}, // TRIGGERSENSE
    {scaled, 300.0f},     // ATTACKTIME
    {scaled, 500.0f},     // RELEASTIME
    {scaled, 200.0f},     // HOLDTIME
    {bend},               // ATTACKCRUVE
    {bend},               // RELEASECURVE
    {scaled},             // STRENGTH
    {scaled, 800.0f},     // LOCKTIME
    {scaled, 2.0f},       // FILTERTYPE
    {scaled, 18000.0f},   // EQ1FREQ
    {gain},               // EQ1GAIN
    {scaled, 1.75f},      // EQ1WIDTH
    {scaled, 18000.0f},   // EQ2FREQ
    {gain},               // EQ2GAIN
    {scaled, 1.75f},      // EQ2WIDTH
    {scaled, 2.0f},       // INPUTGAIN
    {scaled, 2.0f},       // OUTPUTGAIN
    {scaled},             // BYPASS
    {scaled, 300.0f},     // ATTACKTIME_HI
    {scaled, 500.0f},     // RELEASTIME_HI
    {scaled, 200.0f},     // HOLDTIME_HI
    {bend},               // ATTACKCRUVE_HI
    {bend},               // RELEASECURVE_HI
    {scaled},             // STRENGTH_HI
    {selection},          // TRIGGERMODE
    {selection},          // LISTENTO
    {scaled},             // LOWBANDVOL
    {scaled},             // HIGHBANDVOL
};

// In single precision, one operation after another.
float realValue(const Mapping& mapping, float v)
{
    switch (mapping.rule)
    {
    case gain:
        return v * 40.0f - 20.0f;
    case bend:
        return (v < 0.5f ? 8.0f : 6.0f) - 14.0f * v;
    case selection:
        return std::trunc(v * 3.0f + 0.5f);
    case scaled:
        break;
    }
    return v * mapping.factor;
}

float readLittleFloat(const char* from)
{
    return std::bit_cast<float>(Core::readLittle32(from));
}

AProgram readProgram(const char* data, const RawForm& form, int index)
{
    const size_t offset = size_t(index) * form.stride;
    const char* values = data + form.values + offset;
    AProgram program;
    for (float& value : program.values)
        value = readLittleFloat(values + 4 * (&value - program.values));
    std::memcpy(program.name, values + sizeof program.values, AProgram::kNameSize);
    program.tempo = form.tempo ? readLittleFloat(data + *form.tempo + offset) : tempoOfNone;
    return program;
}

bool isInWrongOrder(const AProgram& program)
{
    const auto inRange = [](float v) { return v >= 0.0f && v <= 1.0f; };
    return !std::all_of(program.values, program.values + DKS::kNumChunkParameters, inRange);
}

void reverseWords(AProgram& program)
{
    for (float& value : program.values)
        value = std::bit_cast<float>(__builtin_bswap32(std::bit_cast<std::uint32_t>(value)));
    for (int i = 0; i < AProgram::kNameSize; i += 4)
        std::reverse(program.name + i, program.name + i + 4);
}

void writeBigFloat(char* to, float number)
{
    Core::writeBig32(to, std::bit_cast<std::uint32_t>(number));
}

void writeHeader(char* to)
{
    chunk::id.copy(to, chunk::id.size());
    Core::writeBig32(to + chunk::headerSize, writtenHeaderSize);
    Core::writeBig32(to + chunk::version, kFirstVersion);
    Core::writeBig32(to + chunk::keyBlockSize, writtenKeyBlockSize);
    Core::writeBig32(to + chunk::recordCount, DKS::kNumChunkParameters);
    Core::writeBig32(to + chunk::recordSize, record::size);
}
}

bool isRawForm(long size)
{
    return findRawForm(size) != nullptr;
}

int setChunkOld(const void* data, int size, bool single, CPresetConverterCallback* callback)
{
    const RawForm* form = findRawForm(size);
    if (!data || !callback || !form || form->single != single)
        return 0;
    for (int i = 0; i < (single ? 1 : numPrograms); ++i)
    {
        const std::string converted =
            createNewTypeChunk(readProgram(static_cast<const char*>(data), *form, i));
        if (!single)
            callback->setProgram(i);
        callback->setDataChunk(converted.data(), long(converted.size()));
    }
    return 1;
}

std::string createNewTypeChunk(AProgram program)
{
    if (program.tempo == 0.0f)
        program.tempo = tempoOfNone;
    if (isInWrongOrder(program))
        reverseWords(program);

    std::string out(writtenSize, '\0');
    writeHeader(out.data());
    std::memcpy(out.data() + chunk::name, program.name, AProgram::kNameSize);
    for (size_t i = 0; i < DKS::kNumChunkParameters; ++i)
    {
        char* const to = out.data() + chunk::records + i * record::size;
        const std::string& id = DKS::ps_plain[i].id;
        id.copy(to + record::id, record::idSize - 1);
        writeBigFloat(to + record::value, realValue(mappings[i], program.values[i]));
        writeBigFloat(to + record::tempo, program.tempo);
    }
    return out;
}
}
