// SPDX-License-Identifier: GPL-3.0-or-later
#include "presets/PresetWriter.h"

#include "CORE/File.h"
#include "CORE/ForeignData.h"
#include "Orbel/storage/CFileFormat.h"
#include "Orbel/storage/CPresetStore.h"
#include "Sonvex/FileNames.h"
#include "presets/OLDPRESET.h"
#include "presets/PresetNames.h"
#include "presets/StateLayout.h"

PresetWriter::PresetWriter(const std::string& to, const char* itsExtension)
    : folder(to), extension(itsExtension), allowance(Core::kLargestForeignSize)
{
    note(Core::File::mkDirRecursive(folder.c_str()).problem);
    files.emplace(folder.c_str());
}

void PresetWriter::note(const std::string& problem)
{
    if (result.problem.empty())
        result.problem = problem;
}

std::string PresetWriter::nameOf(std::string_view stored, std::string& problem)
{
    if (!stored.data())
        problem = "it is missing";
    else if (OLDPRESET::isOldPresetOrBank(stored.data(), long(stored.size())))
        problem = "it is of an older form, which a bank cannot hold";
    if (!problem.empty())
        return {};
    Orbel::CPresetStore preset;
    preset.setPresetID(StateLayout::presetID);
    std::string copy(stored); // reading changes it
    if (const auto found = preset.read(copy, allowance); !found.taken)
        problem = found.why;
    return preset.getPresetName();
}

void PresetWriter::write(int index, std::string_view stored)
{
    std::string problem;
    const std::string name = nameOf(stored, problem);
    if (!problem.empty())
        return note("preset " + std::to_string(index) + ": " + problem);
    const Sonvex::String number("%02i-", index + 1);
    const std::string file = Tovra::fileNameFor(number + Tovra::sanitizedName(name), extension);
    const std::string image = Orbel::kPresetFormatFXP->wrap(getFileName((folder + file).c_str()),
                                                            stored.data(), long(stored.size()));
    if (const auto done = files->write((folder + file).c_str(), image.data(), image.size()); !done)
        note(file + ": " + done.problem);
}

PresetResult PresetWriter::finish()
{
    note(files->commit().problem);
    result.written = files->getCommittedCount();
    return result;
}
