#include "discovery/identity/ApplicationInfo.h"

#include "persistence/files/NameCleaning.h"
#include "platform/Identity.h"
#include "platform/KnownFolders.h"

#include <string>

namespace tessera {

namespace {

constexpr const char* kUninitialized = "Uninitialized";

// The folder with the names that aren't empty below it; an empty path where the system doesn't give the folder.
FNPath below(platform::KnownFolder folder, const FString& first, const FString& second = FString()) {
    FNPath path(PathKind::folder);
    const auto base = platform::knownFolder(folder);
    if (!base) {
        return path;
    }
    path = FNPath(FStringRef(base->data(), static_cast<std::int32_t>(base->size())), PathKind::folder);
    for (const FString* name : {&first, &second}) {
        if (!name->isEmpty()) {
            path.descend(*name, PathKind::folder);
        }
    }
    return path;
}

} // namespace

ApplicationInfo::ApplicationInfo()
    : productName_(kUninitialized),
      versionText_(kUninitialized),
      vendor_(kDefaultVendor),
      moduleFolder_(PathKind::folder) {
    findModule();
    buildFolders();
}

const FNPath* ApplicationInfo::folder(ApplicationFolder code) {
    switch (code) {
    case ApplicationFolder::userData:
        return &userDataFolder_;
    case ApplicationFolder::module:
        return &moduleFolder_;
    }
    return nullptr;
}

FString ApplicationInfo::vendorFolderName() const {
    return vendor_.isEmpty() ? FString(kDefaultVendor) : vendor_;
}

void ApplicationInfo::setVendor(const FStringRef& vendor) {
    vendor_ = vendor;
    buildFolders();
}

void ApplicationInfo::setApplicationName(const FStringRef& name) {
    applicationName_ = name;
    buildFolders();
}

void ApplicationInfo::findModule() {
    const std::u16string file = platform::modulePath();
    if (file.empty()) {
        return;
    }
    FNPath path(FStringRef(file.data(), static_cast<std::int32_t>(file.size())), PathKind::file);
    moduleName_.setName(path.getName());
    if (path.ascend()) {
        moduleFolder_ = path;
    }
}

void ApplicationInfo::buildFolders() {
    FString folderName = applicationName_;
    cleanName(folderName, 0, ControlCharacters::drop);
    userDataFolder_ = below(platform::KnownFolder::roamingData, vendor_, folderName);
    sharedFilesFolder_ = below(platform::KnownFolder::sharedFiles, vendor_);
}

ApplicationInfo& applicationInfo() {
    // Never destroyed: paths ask for its folders until the process ends.
    static ApplicationInfo& info = *new ApplicationInfo;
    return info;
}

} // namespace tessera
