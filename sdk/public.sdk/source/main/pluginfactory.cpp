#include "public.sdk/source/main/pluginfactory.h"

#include <algorithm>
#include <cstring>

namespace Steinberg {

CPluginFactory* gPluginFactory = nullptr;

CPluginFactory::CPluginFactory(const PFactoryInfo& info) : factoryInfo(info)
{
    FUNKNOWN_CTOR;
}

CPluginFactory::~CPluginFactory()
{
    if (gPluginFactory == this)
        gPluginFactory = nullptr;
    FUNKNOWN_DTOR;
}

IMPLEMENT_REFCOUNT(CPluginFactory)

tresult PLUGIN_API CPluginFactory::queryInterface(FIDString _iid, void** obj)
{
    QUERY_INTERFACE(_iid, obj, IPluginFactory::iid, IPluginFactory)
    QUERY_INTERFACE(_iid, obj, IPluginFactory2::iid, IPluginFactory2)
    QUERY_INTERFACE(_iid, obj, IPluginFactory3::iid, IPluginFactory3)
    QUERY_INTERFACE(_iid, obj, FUnknown::iid, IPluginFactory)
    *obj = nullptr;
    return kNoInterface;
}

bool CPluginFactory::registerClass(const PClassInfo2* info, CreateFunction createFunc,
                                   void* context)
{
    if (!info || !createFunc)
        return false;
    Entry entry{*info, {}, createFunc, context};
    entry.wideInfo.fromAscii(*info);
    entries.push_back(entry);
    return true;
}

const CPluginFactory::Entry* CPluginFactory::entryAt(int32 index) const
{
    if (index < 0 || static_cast<size_t>(index) >= entries.size())
        return nullptr;
    return &entries[static_cast<size_t>(index)];
}

tresult PLUGIN_API CPluginFactory::getFactoryInfo(PFactoryInfo* info)
{
    if (info)
        *info = factoryInfo;
    return kResultOk;
}

int32 PLUGIN_API CPluginFactory::countClasses()
{
    return static_cast<int32>(entries.size());
}

tresult PLUGIN_API CPluginFactory::getClassInfo(int32 index, PClassInfo* info)
{
    const Entry* entry = entryAt(index);
    if (!entry || !info)
        return kInvalidArgument;
    std::memcpy(info->cid, entry->info.cid, sizeof(TUID));
    info->cardinality = entry->info.cardinality;
    std::memcpy(info->category, entry->info.category, sizeof(info->category));
    std::memcpy(info->name, entry->info.name, sizeof(info->name));
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::getClassInfo2(int32 index, PClassInfo2* info)
{
    const Entry* entry = entryAt(index);
    if (!entry || !info)
        return kInvalidArgument;
    *info = entry->info;
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::getClassInfoUnicode(int32 index, PClassInfoW* info)
{
    const Entry* entry = entryAt(index);
    if (!entry || !info)
        return kInvalidArgument;
    *info = entry->wideInfo;
    return kResultOk;
}

tresult PLUGIN_API CPluginFactory::createInstance(FIDString cid, FIDString _iid, void** obj)
{
    if (!obj)
        return kInvalidArgument;
    *obj = nullptr;
    if (!cid || !_iid)
        return kNoInterface;
    const auto entry = std::find_if(entries.begin(), entries.end(), [cid](const Entry& e) {
        return std::memcmp(e.info.cid, cid, sizeof(TUID)) == 0;
    });
    if (entry == entries.end())
        return kNoInterface;
    FUnknown* instance = entry->create(entry->context);
    if (!instance)
        return kNoInterface;
    const tresult result = instance->queryInterface(_iid, obj);
    instance->release();
    if (result == kResultOk)
        return kResultOk;
    *obj = nullptr;
    return kNoInterface;
}

tresult PLUGIN_API CPluginFactory::setHostContext(FUnknown* /*context*/)
{
    return kNotImplemented;
}

}  // namespace Steinberg
