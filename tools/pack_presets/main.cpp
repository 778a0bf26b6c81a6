// SPDX-License-Identifier: GPL-3.0-or-later
// pack_presets BANK.fxb INIT.fxp INIT.preset 01-NAME.preset ...
//
// Run by the build: makes the factory bank and the start state from their texts. A text with a mistake in it
// stops the build, with its file and line.
#include "CORE/File.h"
#include "tools/pack_presets/FactoryBank.h"

#include <iostream>

static void write(const char* path, const std::string& image)
{
    if (const auto written = Core::File::replaceFile(path, image.data(), image.size()); !written)
        throw std::runtime_error(std::string("cannot write ") + path + ": " + written.problem);
}

int main(int count, char** words)
{
    if (count < 5)
    {
        std::cerr << "usage: pack_presets BANK.fxb INIT.fxp INIT.preset 01-NAME.preset ...\n";
        return 2;
    }
    try
    {
        const std::string bank = lodex::packBank(lodex::readBankFiles({words + 4, words + count}));
        const std::string init = lodex::packProgram(lodex::readPresetText(words[3]));
        write(words[1], bank);
        write(words[2], init);
    }
    catch (const std::exception& error)
    {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
