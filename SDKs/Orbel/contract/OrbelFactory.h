// SPDX-License-Identifier: GPL-3.0-or-later
// What adapters ask of the bundle that they are in: the list of its effects, and a new effect. The product
// defines these functions.
#pragma once

#include "Orbel/contract/OrbelOS.h"
#include "Orbel/contract/OrbelPluginList.h"

// Fills list with one description for each effect of this bundle.
void getOrbelPluginList(Orbel::OrbelPluginList& list);
// The same list as an object of the bundle's own.
Orbel::OrbelPluginList* getOrbelPluginListPTR();

// A new effect, owned by the caller and destroyed through its virtual destructor. callback may be null
// and must outlive the effect. The id is accepted and not compared: a bundle holds one effect.
Orbel::OrbelOS* createOrbelInstance(Orbel::OrbelCallback* callback, unsigned long id);
