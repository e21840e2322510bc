// Paths, records and observers for the tests of the components.
#pragma once

#include "components/FComponentDescription.h"
#include "components/IComponentObserver.h"
#include "components/RecordText.h"
#include "foundation/object/FRefPtr.h"
#include "persistence/paths/FNPath.h"
#include "platform/NativePath.h"

#include <cstring>
#include <string>
#include <vector>

namespace tessera::test {

inline FRefPtr<FNPath> nativePath(const std::string& native, PathKind kind = PathKind::file) {
    const auto text = platform::fromNativePath(native);
    return FRefPtr<FNPath>::adopt(new FNPath(FStringRef(text->c_str()), kind));
}

// The class i of the test module with that number, see TestModule.cpp.
inline FUIDBytes moduleClass(std::uint8_t module, std::uint8_t index = 0) {
    FUIDBytes uid;
    uid.bytes[0] = module;
    uid.bytes[1] = index;
    uid.bytes[15] = 1;
    return uid;
}

inline ClassInfoWide classInfo(std::uint8_t number, const char* category, const char* name, const char* version = "",
                               const char* sdkVersion = "") {
    ClassInfoWide info;
    info.classId.bytes[0] = number;
    info.classId.bytes[8] = 0xCC;
    info.cardinality = 1;
    setField(info.category, FString(category));
    setField(info.name, FString(name));
    setField(info.version, FString(version));
    setField(info.sdkVersion, FString(sdkVersion));
    return info;
}

class NotedComponents : public IComponentObserver {
public:
    virtual ~NotedComponents() = default;
    void componentAdded(FComponentDescription& description) override {
        events.push_back("+" + std::string(FString(description.getName()).text8()));
    }
    void componentRemoved(FComponentDescription& description) override {
        events.push_back("-" + std::string(FString(description.getName()).text8()));
    }
    std::vector<std::string> events;
};

} // namespace tessera::test
