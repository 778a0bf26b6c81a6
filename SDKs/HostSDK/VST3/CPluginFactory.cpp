// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostSDK/VST3/CPluginFactory.h"

#include <algorithm>
#include <cstring>

namespace Steinberg
{
static bool sameID(const void* id, const void* other)
{
    return std::memcmp(id, other, sizeof(TUID)) == 0;
}

bool CPluginFactory::registerClass(const PClassInfo2& info, CreateFunction create, void* context)
{
    const auto isIt = [&](const Class& each) { return sameID(each.info.cid, info.cid); };
    if (!create || std::any_of(classes.begin(), classes.end(), isIt))
        return false;
    classes.push_back({info, create, context});
    return true;
}

const CPluginFactory::Class* CPluginFactory::at(int32 index) const
{
    return index >= 0 && size_t(index) < classes.size() ? &classes[size_t(index)] : nullptr;
}

tresult PLUGIN_API CPluginFactory::getFactoryInfo(PFactoryInfo* info)
{
    if (!info)
        return kInvalidArgument;
    *info = factoryInfo;
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::getClassInfo(int32 index, PClassInfo* info)
{
    const Class* const found = at(index);
    if (!found || !info)
        return kInvalidArgument;
    *info = PClassInfo(found->info.cid, found->info.cardinality, found->info.category, found->info.name);
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::getClassInfo2(int32 index, PClassInfo2* info)
{
    const Class* const found = at(index);
    if (!found || !info)
        return kInvalidArgument;
    *info = found->info;
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::getClassInfoUnicode(int32 index, PClassInfoW* info)
{
    const Class* const found = at(index);
    if (!found || !info)
        return kInvalidArgument;
    info->fromAscii(found->info);
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::createInstance(FIDString classID, FIDString interfaceID, void** object)
{
    if (!object)
        return kInvalidArgument;
    *object = nullptr;
    if (!classID || !interfaceID)
        return kInvalidArgument;
    const auto isIt = [&](const Class& each) { return sameID(each.info.cid, classID); };
    const auto found = std::find_if(classes.begin(), classes.end(), isIt);
    if (found == classes.end())
        return kNoInterface;
    FUnknown* const made = found->create(found->context);
    if (!made)
        return kOutOfMemory;
    TUID wanted;
    std::memcpy(wanted, interfaceID, sizeof wanted);
    const tresult result = made->queryInterface(wanted, object);
    made->release();
    return result == kResultOk ? kResultOk : kNoInterface;
}

tresult PLUGIN_API CPluginFactory::queryInterface(const TUID interfaceID, void** object)
{
    QUERY_INTERFACE(interfaceID, object, IPluginFactory::iid, IPluginFactory)
    QUERY_INTERFACE(interfaceID, object, IPluginFactory2::iid, IPluginFactory2)
    QUERY_INTERFACE(interfaceID, object, IPluginFactory3::iid, IPluginFactory3)
    QUERY_INTERFACE(interfaceID, object, FUnknown::iid, FUnknown)
    *object = nullptr;
    return kNoInterface;
}

uint32 PLUGIN_API CPluginFactory::release()
{
    const uint32 left = --references;
    if (left == 0)
        delete this;
    return left;
}
}
