// CPluginFactory: registers, describes and creates the classes of a plug-in library.
#pragma once

#include "pluginterfaces/base/ipluginbase.h"

#include <vector>

namespace Steinberg {

class CPluginFactory : public IPluginFactory3 {
public:
    using CreateFunction = FUnknown* (*)(void* context);

    explicit CPluginFactory(const PFactoryInfo& info);
    virtual ~CPluginFactory();

    // Adds a class, whose record is copied; false without record or creation function.
    bool registerClass(const PClassInfo2* info, CreateFunction createFunc, void* context = nullptr);

    DECLARE_FUNKNOWN_METHODS

    tresult PLUGIN_API getFactoryInfo(PFactoryInfo* info) override;
    int32 PLUGIN_API countClasses() override;
    tresult PLUGIN_API getClassInfo(int32 index, PClassInfo* info) override;
    tresult PLUGIN_API getClassInfo2(int32 index, PClassInfo2* info) override;
    tresult PLUGIN_API getClassInfoUnicode(int32 index, PClassInfoW* info) override;
    // Creates an object of the class `cid` and returns its interface `_iid`; an unknown class or
    // interface gives kNoInterface and a null object.
    tresult PLUGIN_API createInstance(FIDString cid, FIDString _iid, void** obj) override;
    tresult PLUGIN_API setHostContext(FUnknown* context) override;

private:
    struct Entry {
        PClassInfo2 info;
        PClassInfoW wideInfo;
        CreateFunction create;
        void* context;
    };

    const Entry* entryAt(int32 index) const;

    PFactoryInfo factoryInfo;
    std::vector<Entry> entries;
};

// The library's factory: null before it is created and after it is destroyed.
extern CPluginFactory* gPluginFactory;

}  // namespace Steinberg
