// SPDX-License-Identifier: GPL-3.0-or-later
// The list of classes that a bundle offers, and the way to make one: the object behind GetPluginFactory.
//
// Counted like every object of the interface: it starts with one reference. Filled before a host sees it,
// and only read from then on. [any thread] once filled.
#pragma once

#include "pluginterfaces/base/ipluginbase.h"

#include <atomic>
#include <vector>

namespace Steinberg
{
class CPluginFactory : public IPluginFactory3
{
public:
    // Makes a new object with one reference. context is what the class was registered with.
    using CreateFunction = FUnknown* (*)(void* context);

    explicit CPluginFactory(const PFactoryInfo& info) : factoryInfo(info) {}

    // False, and nothing happens, if there is no function or if a class with that id is registered already.
    bool registerClass(const PClassInfo2& info, CreateFunction create, void* context);

    // IPluginFactory, IPluginFactory2
    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override;
    int32 PLUGIN_API countClasses() override { return int32(classes.size()); }
    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override;
    tresult PLUGIN_API createInstance(FIDString classID, FIDString interfaceID, void** object) override;
    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override;
    // IPluginFactory3: the same in UTF-16. The host's context is not used.
    tresult PLUGIN_API getClassInfoUnicode(int32 index, PClassInfoW* info) override;
    tresult PLUGIN_API setHostContext(FUnknown*) override { return kNotImplemented; }

    tresult PLUGIN_API queryInterface(const TUID interfaceID, void** object) override;
    uint32 PLUGIN_API addRef() override { return ++references; }
    uint32 PLUGIN_API release() override;

protected:
    virtual ~CPluginFactory() = default;

private:
    struct Class
    {
        PClassInfo2 info;
        CreateFunction create;
        void* context;
    };

    const Class* at(int32 index) const;

    PFactoryInfo factoryInfo;
    std::vector<Class> classes;
    std::atomic<uint32> references = 1;
};
}
