// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes as a parameter chunk: whatever they are, every value stays a number inside its range, and
// what is saved afterwards loads to the same values.
#include "Orbel/parameters/CPropertyManager.h"
#include "Orbel/storage/ParameterChunk.h"
#include "Require.h"
#include "effect/parameters/DKS.h"

#include <bit>

namespace
{
void createAll(Orbel::CPropertyManager& manager)
{
    for (const Orbel::ParameterPropertySetup& row : DKS::ps_plain)
        manager.CreateProperty(&row);
    Orbel::ParameterProperty* reversed = manager.getProperty("LOCKTIME");
    reversed->setMin(800.0f);
    reversed->setMax(50.0f);
}

void requireInRange(const Orbel::CPropertyManager& manager)
{
    for (int i = 0; i < manager.getPropertyCount(); ++i)
    {
        const Orbel::ParameterProperty& property = *manager.getProperty(i);
        const float value = property.getCurrentValue();
        const bool inside = (property.getMin() <= value && value <= property.getMax()) ||
                            (property.getMax() <= value && value <= property.getMin());
        require(inside, "a value is in its range"); // and not a NaN, which lies in none
    }
}

void requireSameAfterReload(Orbel::CPropertyManager& manager)
{
    Orbel::CPropertyManager other;
    createAll(other);
    char* chunk = nullptr;
    const unsigned long size = manager.getChunk(&chunk);
    other.setChunk(chunk, size, -1, {}, nullptr);
    for (int i = 0; i < manager.getPropertyCount(); ++i)
        require(std::bit_cast<unsigned>(manager.getProperty(i)->getCurrentValue()) ==
                    std::bit_cast<unsigned>(other.getProperty(i)->getCurrentValue()),
                "what is saved loads to the same");
}
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, size_t size)
{
    const char* bytes = reinterpret_cast<const char*>(data);
    Orbel::ParameterChunk chunk;
    const Orbel::Diagnosis found = chunk.read({bytes, size});
    require(found.taken == !chunk.empty() && found.taken == found.why.empty(),
            "there are values, or a reason why not");
    Orbel::CPropertyManager manager;
    createAll(manager);
    manager.setChunkWithLoadSuffix(bytes, size, 2); // to the ids "EQ2..."
    requireInRange(manager);
    manager.setChunkWithIgnoreList(bytes, size, {3, 42});
    requireInRange(manager);
    requireSameAfterReload(manager);
    return 0;
}
