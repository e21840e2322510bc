// ProgramFolders: gives the program folders of its own for one test, and listens to what the user is asked.
#pragma once

#include "appservices/translation/LanguageTable.h"
#include "persistence/objects/PersistenceHooks.h"
#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "platform/NativePath.h"
#include "support/ScratchFolder.h"

#include <string>
#include <vector>

namespace tessera::test {

class ProgramFolders final : public IApplicationFolders {
public:
    ProgramFolders() {
        current() = this;
        applicationFoldersSource = []() -> IApplicationFolders* { return current(); };
        persistenceHooks.ask = [](const FStringRef& question, const FStringRef&, const FStringRef&) {
            FString text(question);
            text.toWide();
            current()->questions.emplace_back(text.view16());
            return true;
        };
    }
    ProgramFolders(const ProgramFolders&) = delete;
    ProgramFolders& operator=(const ProgramFolders&) = delete;
    ~ProgramFolders() {
        applicationFoldersSource = nullptr;
        persistenceHooks.ask = nullptr;
        LanguageTable::getInstance().setUserLanguage(-1);
    }

    const FNPath* folder(ApplicationFolder code) override {
        return code == ApplicationFolder::userData ? &userPath_ : &modulePath_;
    }
    const FString& vendor() override { return vendor_; }

    testing_support::ScratchFolder user;
    testing_support::ScratchFolder module;
    std::vector<std::u16string> questions;

private:
    static ProgramFolders*& current() {
        static ProgramFolders* folders = nullptr;
        return folders;
    }

    static FNPath pathOf(const testing_support::ScratchFolder& folder) {
        const auto text = platform::fromNativePath(testing_support::utf8OfPath(folder.path()));
        return FNPath(FStringRef(text->c_str()), PathKind::folder);
    }

    FNPath userPath_ = pathOf(user);
    FNPath modulePath_ = pathOf(module);
    FString vendor_;
};

} // namespace tessera::test
