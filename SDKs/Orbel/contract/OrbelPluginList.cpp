// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/contract/OrbelPluginList.h"

namespace Orbel
{
unsigned long OrbelFX_Description::idAsWord() const
{
    unsigned long word = 0;
    for (int i = 7; i >= 0; --i)
        word = word << 8 | static_cast<unsigned char>(id[i]);
    return word;
}

OrbelPluginList::OrbelPluginList(const OrbelPluginList& other)
{
    *this = other;
}

OrbelPluginList& OrbelPluginList::operator=(const OrbelPluginList& other)
{
    if (this == &other)
        return *this;
    entries.clear();
    for (const auto& entry : other.entries)
        push_back(*entry);
    return *this;
}

void OrbelPluginList::push_back(const OrbelFX_Description& description)
{
    entries.push_back(std::make_unique<OrbelFX_Description>(description));
}
}
