// SPDX-License-Identifier: GPL-3.0-or-later
// Owns a set of parameters, finds them, and saves and restores their values as records, or as a chunk of them
// (ParameterChunk.h).
//
// A record names its parameter by the id text: a parameter that has no record keeps what it has, a record
// without a parameter is skipped. Chunks are untrusted input: one that fails any check changes nothing.
//
// Made and used on the window thread; the getters by index and id may be called on any thread once all
// properties are created. setChunk notifies listeners on the thread that calls it. Saving and loading
// allocate and compare texts: not for the audio thread, and saving not for two threads at once.
#pragma once

#include "Orbel/parameters/ParameterProperty.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace Orbel
{
class ParameterChunk;

class CPropertyManager
{
public:
    // Answers the id text to look up for the id text of a record.
    class IIDConverter
    {
    public:
        virtual const char* convertID(const char* recordID) = 0; // null: no parameter

    protected:
        ~IIDConverter() = default;
    };

    CPropertyManager() = default;
    CPropertyManager(const CPropertyManager&) = delete;
    CPropertyManager& operator=(const CPropertyManager&) = delete;
    virtual ~CPropertyManager() = default;

    // A property of that id text that exists already is answered as it is. Never null; stays the
    // manager's, and lives as long as it.
    ParameterProperty* CreateProperty(const ParameterPropertySetup* setup);
    // A copy by operator=, also if that id exists: lookups find the first.
    ParameterProperty* CreateProperty(const ParameterProperty* source);

    // Null if there is none. Indices go by the order of creation.
    ParameterProperty* getProperty(int index) const;
    ParameterProperty* getProperty(const char* id) const;
    ParameterProperty* getPropertyByID(long parameterId) const;
    ParameterProperty* getProperty_automateable(int index) const;
    int getPropertyCount() const { return int(properties.size()); }
    int getAutomateAblePropertyCount() const { return int(automatable.size()); }

    // The values of all, or of the given properties; a null among them gives a record of zeros.
    ParameterChunk getRecords() const;
    static ParameterChunk getRecords(const std::vector<ParameterProperty*>& list);
    // Sets the values that the records name, clamped to today's ranges, with notification. Parameter ids to
    // ignore are left alone.
    void setRecords(const ParameterChunk& records, std::span<const int> ignored);

    // The same as bytes: the size, or 0, and then the address is left unwritten. The buffer is valid until
    // the next call.
    unsigned long getChunk(char** data);
    unsigned long getChunkFromList(char** data, const std::vector<ParameterProperty*>& list);

    // setRecords with the chunk in the data. A converter (or null) replaces the ids; without one, a suffix
    // from 0 replaces the first number (but 0) in each id.
    void setChunk(const char* data, unsigned long size, int loadSuffix, const std::vector<long>& ignored,
                  IIDConverter* converter);
    void setChunkWithLoadSuffix(const char* data, unsigned long size, int loadSuffix);
    void setChunkWithIgnoreList(const char* data, unsigned long size, const std::vector<long>& ignored);

    void setAllParamsToDefault();

private:
    ParameterProperty* append(std::unique_ptr<ParameterProperty> property);
    unsigned long handOut(const ParameterChunk& records, char** data);
    ParameterProperty* propertyOfRecord(const std::string& id, int loadSuffix, IIDConverter* converter) const;

    std::vector<std::unique_ptr<ParameterProperty>> properties;
    std::vector<ParameterProperty*> automatable;
    std::string chunk; // the last one that was handed out
};
}
