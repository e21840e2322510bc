// SettingsFolder: gives the program a folder of its own for its settings, for the length of a scope.
#pragma once

#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "platform/NativePath.h"
#include "support/ScratchFolder.h"

namespace tessera::test {

class SettingsFolder final : public IApplicationFolders {
public:
    SettingsFolder() : before_(applicationFoldersSource) {
        path_.set(FStringRef(platform::fromNativePath(testing_support::utf8OfPath(folder_.path()))->c_str()),
                  PathKind::folder);
        current() = this;
        applicationFoldersSource = []() -> IApplicationFolders* { return current(); };
    }
    SettingsFolder(const SettingsFolder&) = delete;
    SettingsFolder& operator=(const SettingsFolder&) = delete;
    virtual ~SettingsFolder() { applicationFoldersSource = before_; }

    const FNPath* folder(ApplicationFolder) override { return &path_; }
    const FString& vendor() override { return vendor_; }
    const testing_support::ScratchFolder& scratch() const { return folder_; }

private:
    static SettingsFolder*& current() {
        static SettingsFolder* folder = nullptr;
        return folder;
    }

    ApplicationFoldersSource before_;
    testing_support::ScratchFolder folder_;
    FNPath path_;
    FString vendor_;
};

} // namespace tessera::test
