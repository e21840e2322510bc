#include "persistence/paths/FNPath.h"
#include "persistence/paths/IApplicationFolders.h"
#include "persistence/paths/SpecialFolders.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [folders of the program]
class OwnFolders final : public IApplicationFolders {
public:
    const FNPath* folder(ApplicationFolder code) override {
        return code == ApplicationFolder::userData ? &userData_ : &module_;
    }
    const FString& vendor() override { return vendor_; }

private:
    FNPath userData_{"/home/ada/.config/notes", PathKind::folder};
    FNPath module_{"/opt/notes", PathKind::folder};
    FString vendor_{"Ada"};
};

IApplicationFolders* ownFolders() {
    static OwnFolders folders;
    return &folders;
}

void startProgram() {
    applicationFoldersSource = &ownFolders; // first of all
}
// [folders of the program]

TEST(ApplicationFoldersExample, PathsAndFilesOfTheProgramStandInItsFolders) {
    const ApplicationFoldersSource before = applicationFoldersSource;
    startProgram();
    const FNPath path("Defaults.xml", PathFolder::userData, PathKind::file);
    EXPECT_TRUE(path.FPath::getFullPath() == "\\home\\ada\\.config\\notes\\Defaults.xml");
    EXPECT_TRUE(vendorName() == "Ada");
    applicationFoldersSource = before;
}

} // namespace
} // namespace tessera::test
