// The doors of a bundle: what it holds, and how an adapter makes one. The product defines them.
#pragma once

#include "Orbel/contract/OrbelOS.h"
#include "Orbel/contract/OrbelPluginList.h"

// Fills list with the descriptions of what this bundle holds.
void getOrbelPluginList(Orbel::OrbelPluginList& list);
// The same list, as one that belongs to the bundle.
Orbel::OrbelPluginList* getOrbelPluginListPTR();

// A new effect, owned by the caller and destroyed through its virtual destructor. callback may be null
// and must outlive the effect. The id is accepted and not compared: a bundle holds one effect.
Orbel::OrbelOS* createOrbelInstance(Orbel::OrbelCallback* callback, unsigned long id);
