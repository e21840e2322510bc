// A module for the tests of whatever finds and loads modules. What happens to it goes, a line each, to the file that
// the environment names in TESX_TEST_MODULE_LOG: "<name> <event>".
//
// What a definition changes: MODULE_FLAGS the factory's flags; MODULE_CLASSES how many classes there are, 1 if not
// told; MODULE_CATEGORY theirs; MODULE_FACTORY the newest of the three factory interfaces that is answered; and the
// others what their names say. The identifier of class i is 16 bytes: MODULE_ID, i, then zeros and a last byte of 1.
#include "shell/hostapi/ClassInfo.h"
#include "shell/hostapi/ClassInfoEx.h"
#include "shell/hostapi/ClassInfoWide.h"
#include "shell/hostapi/FactoryInfo.h"
#include "shell/hostapi/IModuleFactory3.h"
#include "shell/hostapi/IPlugin.h"
#include "support/Counted.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#ifndef MODULE_FLAGS
#define MODULE_FLAGS 0
#endif
#ifndef MODULE_CLASSES
#define MODULE_CLASSES 1
#endif
#ifndef MODULE_CATEGORY
#define MODULE_CATEGORY "Test"
#endif
#ifndef MODULE_FACTORY
#define MODULE_FACTORY 3
#endif

namespace {

using namespace tessera;

#ifdef MODULE_REFUSES_INIT
constexpr bool kAgrees = false;
#else
constexpr bool kAgrees = true;
#endif
#ifdef MODULE_REFUSES_HOST
constexpr bool kAdmitsHost = false;
#else
constexpr bool kAdmitsHost = true;
#endif

void note(const char* event) {
    const char* path = std::getenv("TESX_TEST_MODULE_LOG");
    std::FILE* file = path != nullptr ? std::fopen(path, "a") : nullptr;
    if (file != nullptr) {
        std::fprintf(file, "%s %s\n", MODULE_NAME, event);
        std::fclose(file);
    }
}

FUIDBytes classId(std::int32_t index) {
    FUIDBytes uid;
    uid.bytes[0] = MODULE_ID;
    uid.bytes[1] = static_cast<std::uint8_t>(index);
    uid.bytes[15] = 1;
    return uid;
}

template <class Info>
void describe(std::int32_t index, Info& info) {
    info = {};
    info.classId = classId(index);
    info.cardinality = 0x7fffffff;
    std::strcpy(info.category, MODULE_CATEGORY);
}

void nameOf(std::int32_t index, char (&name)[64]) {
    std::snprintf(name, sizeof name, "%s %d", MODULE_NAME, static_cast<int>(index));
}

class Plugin final : public test::Counted<IPlugin> {
public:
    ~Plugin() override { note("object gone"); }
    FResult initialize(IBaseUnknown* context) override {
        note(context != nullptr ? "initialize" : "initialize without context");
        return kAdmitsHost ? kResultOk : kResultFalse;
    }
    FResult terminate() override {
        note("terminate");
        return kResultOk;
    }
};

class Factory final : public test::Counted<IModuleFactory3> {
public:
    ~Factory() override { note("factory gone"); }
    FResult queryInterface(const FUIDBytes& uid, void** out) override {
        const bool known = uid == IBaseUnknown::iid || uid == IModuleFactory::iid ||
                           (MODULE_FACTORY >= 2 && uid == IModuleFactory2::iid) ||
                           (MODULE_FACTORY >= 3 && uid == IModuleFactory3::iid);
        *out = known ? this : nullptr;
        return known ? (addRef(), kResultOk) : kNoInterface;
    }
    FResult describeFactory(FactoryInfo* info) override {
        note("described");
        *info = {};
        std::strcpy(info->vendor, "Test Vendor");
        std::strcpy(info->url, "https://example.invalid/modules");
        std::strcpy(info->email, "mailto:modules@example.invalid");
        info->flags = MODULE_FLAGS;
        return kResultOk;
    }
    std::int32_t classCount() override { return MODULE_CLASSES; }
    FResult describeClass(std::int32_t index, ClassInfo* info) override {
        describe(index, *info);
        nameOf(index, info->name);
        return kResultOk;
    }
    FResult createObject(const FUIDBytes& uid, const FUIDBytes& interfaceId, void** out) override {
        *out = nullptr;
#ifndef MODULE_WITHOUT_OBJECTS
        for (std::int32_t i = 0; i < MODULE_CLASSES; ++i) {
            if (uid == classId(i)) {
                auto* plugin = new Plugin;
                const FResult result = plugin->queryInterface(interfaceId, out);
                plugin->release();
                return result;
            }
        }
#else
        static_cast<void>(uid);
        static_cast<void>(interfaceId);
#endif
        return kNoInterface;
    }
    FResult describeClassEx(std::int32_t index, ClassInfoEx* info) override {
        describe(index, *info);
        nameOf(index, info->name);
        info->classFlags = 5;
        std::strcpy(info->subcategories, "Sub|Category");
        std::strcpy(info->vendor, "Class Vendor");
        std::strcpy(info->version, "1.2.3.4");
        std::strcpy(info->sdkVersion, "2.5.1");
        return kResultOk;
    }
    FResult describeClassWide(std::int32_t index, ClassInfoWide* info) override {
        describe(index, *info);
        char name[64];
        nameOf(index, name);
        for (std::size_t i = 0; name[i] != '\0'; ++i) {
            info->name[i] = static_cast<char16_t>(name[i]);
        }
        info->classFlags = 5;
        std::strcpy(info->subcategories, "Sub|Category");
        std::memcpy(info->vendor, u"Class V\u00E9ndor \u97F3", sizeof u"Class V\u00E9ndor \u97F3");
        std::memcpy(info->version, u"1.2.3.4", sizeof u"1.2.3.4");
        std::memcpy(info->sdkVersion, u"2.5.1", sizeof u"2.5.1");
        return kResultOk;
    }
    FResult attachHost(IBaseUnknown*) override {
        note("attached");
        return kResultOk;
    }
};

} // namespace

#define EXPORTED extern "C" [[gnu::visibility("default")]]

#ifndef MODULE_WITHOUT_ENTRIES
EXPORTED bool InitDll() {
    note("loaded");
    return kAgrees;
}

EXPORTED bool ExitDll() {
    note("unloaded");
    return true;
}
#endif

#ifndef MODULE_WITHOUT_FACTORY
EXPORTED IModuleFactory* GetPluginFactory() {
#ifdef MODULE_NULL_FACTORY
    return nullptr;
#else
    return new Factory;
#endif
}
#endif
