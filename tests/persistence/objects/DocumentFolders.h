// The two folders of a program's documents, as folders of the test's own: the user's, and the one of the module.
#pragma once

#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "platform/NativePath.h"

#include <filesystem>

namespace tessera::test {

class DocumentFolders final : public IApplicationFolders {
public:
    DocumentFolders(const std::filesystem::path& user, const std::filesystem::path& module)
        : user_(pathOf(user)), module_(pathOf(module)) {
        current = this;
        applicationFoldersSource = []() -> IApplicationFolders* { return current; };
    }
    DocumentFolders(const DocumentFolders&) = delete;
    DocumentFolders& operator=(const DocumentFolders&) = delete;
    ~DocumentFolders() { applicationFoldersSource = nullptr; }

    const FNPath* folder(ApplicationFolder code) override {
        return code == ApplicationFolder::userData ? &user_ : &module_;
    }
    const FString& vendor() override { return vendor_; }

private:
    static FNPath pathOf(const std::filesystem::path& folder) {
        const std::u16string text = *platform::fromNativePath(folder.string());
        return FNPath(text.c_str(), PathKind::folder);
    }

    static inline DocumentFolders* current = nullptr;

    FNPath user_;
    FNPath module_;
    FString vendor_;
};

} // namespace tessera::test
