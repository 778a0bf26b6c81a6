// SPDX-License-Identifier: GPL-3.0-or-later
#include "Orbel/parameters/CPropertyManager.h"

#include "Orbel/storage/ParameterChunk.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace Orbel
{
namespace
{
// The id with the suffix in place of its first number. A 0 does not count as a number, and what strtol takes
// for part of a number (blanks, a sign) is replaced with it.
std::string withSuffix(const std::string& id, int suffix)
{
    for (const char* at = id.c_str(); *at; ++at)
    {
        char* tail = nullptr;
        if (std::strtol(at, &tail, 10) != 0)
            return id.substr(0, size_t(at - id.c_str())) + std::to_string(suffix) + tail;
    }
    return id;
}

void appendRecord(ParameterChunk& records, const ParameterProperty* property)
{
    if (property)
        records.append(property->getID(), property->getCurrentValue(), property->getMin(),
                       property->getMax());
    else
        records.appendEmpty();
}

template <typename Ids>
void setRecord(ParameterProperty* property, float value, const Ids& ignored)
{
    if (property &&
        std::find(std::begin(ignored), std::end(ignored), property->getParameterID()) == std::end(ignored))
        property->setValue(value);
}

template <typename List>
auto* elementAt(const List& list, int index)
{
    return index >= 0 && size_t(index) < list.size() ? &*list[size_t(index)] : nullptr;
}
}

ParameterProperty* CPropertyManager::CreateProperty(const ParameterPropertySetup* setup)
{
    if (ParameterProperty* known = getProperty(setup->id.c_str()))
        return known;
    auto property = std::make_unique<ParameterProperty>();
    property->setup(setup);
    return append(std::move(property));
}

ParameterProperty* CPropertyManager::CreateProperty(const ParameterProperty* source)
{
    auto property = std::make_unique<ParameterProperty>();
    *property = *source;
    return append(std::move(property));
}

ParameterProperty* CPropertyManager::append(std::unique_ptr<ParameterProperty> property)
{
    if (property->isAutomateable())
    {
        property->setAutomationIndex(long(automatable.size()));
        automatable.push_back(property.get());
    }
    return properties.emplace_back(std::move(property)).get();
}

ParameterProperty* CPropertyManager::getProperty(int index) const
{
    return elementAt(properties, index);
}

ParameterProperty* CPropertyManager::getProperty(const char* id) const
{
    for (const auto& property : properties)
        if (id && property->hasID(id))
            return property.get();
    return nullptr;
}

ParameterProperty* CPropertyManager::getPropertyByID(long parameterId) const
{
    for (const auto& property : properties)
        if (property->getParameterID() == parameterId)
            return property.get();
    return nullptr;
}

ParameterProperty* CPropertyManager::getProperty_automateable(int index) const
{
    return elementAt(automatable, index);
}

void CPropertyManager::setAllParamsToDefault()
{
    for (const auto& property : properties)
        property->setValueToDefault();
}

ParameterChunk CPropertyManager::getRecords() const
{
    ParameterChunk records;
    for (const auto& property : properties)
        appendRecord(records, property.get());
    return records;
}

ParameterChunk CPropertyManager::getRecords(const std::vector<ParameterProperty*>& list)
{
    ParameterChunk records;
    for (const ParameterProperty* property : list)
        appendRecord(records, property);
    return records;
}

void CPropertyManager::setRecords(const ParameterChunk& records, std::span<const int> ignored)
{
    for (size_t i = 0; i < records.size(); ++i)
        setRecord(getProperty(std::string(records.id(i)).c_str()), records.value(i), ignored);
}

unsigned long CPropertyManager::getChunk(char** data)
{
    return handOut(getRecords(), data);
}

unsigned long CPropertyManager::getChunkFromList(char** data, const std::vector<ParameterProperty*>& list)
{
    return handOut(getRecords(list), data);
}

unsigned long CPropertyManager::handOut(const ParameterChunk& records, char** data)
{
    chunk = records.bytes();
    if (!chunk.empty())
        *data = chunk.data();
    return chunk.size();
}

void CPropertyManager::setChunkWithLoadSuffix(const char* data, unsigned long size, int loadSuffix)
{
    setChunk(data, size, loadSuffix, {}, nullptr);
}

void CPropertyManager::setChunkWithIgnoreList(const char* data, unsigned long size,
                                              const std::vector<long>& ignored)
{
    setChunk(data, size, -1, ignored, nullptr);
}

void CPropertyManager::setChunk(const char* data, unsigned long size, int loadSuffix,
                                const std::vector<long>& ignored, IIDConverter* converter)
{
    ParameterChunk records;
    if (!data || !records.read({data, size}).taken)
        return;
    for (size_t i = 0; i < records.size(); ++i)
        setRecord(propertyOfRecord(std::string(records.id(i)), loadSuffix, converter), records.value(i),
                  ignored);
}

ParameterProperty* CPropertyManager::propertyOfRecord(const std::string& id, int loadSuffix,
                                                      IIDConverter* converter) const
{
    if (converter)
        return getProperty(converter->convertID(id.c_str()));
    return getProperty(loadSuffix < 0 ? id.c_str() : withSuffix(id, loadSuffix).c_str());
}
}
