#include "components/ComponentDoubles.h"
#include "components/FComponentRegistry.h"
#include "persistence/archives/FArchiveManager.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tessera::test {
namespace {

// [archives]
// What lies in an archive stands behind a double backslash.
FNPath inArchive(const FPath& archive, const FStringRef& inside) {
    FString text("vfs:\\\\");
    text.append(archive.getFullPath());
    text.append("\\\\");
    text.append(inside);
    return FNPath(text, PathKind::file);
}

// In a folder or in an archive: it makes no difference here.
FString firstLineOf(FNPath path) {
    FString line;
    FFileSystem* const files = FFileSystem::getInstance();
    if (FStream* stream = files->openFile(path, FileOpenMode::read, nullptr)) {
        stream->readTextLine(line);
        files->closeStream(stream);
    }
    return line;
}
// [archives]

TEST(ArchivesExample, AFileInAnArchiveIsReadAsAnyOther) {
    const auto registry = FRefPtr<FComponentRegistry>::adopt(new FComponentRegistry);
    ASSERT_EQ(registry->scanFolder(*nativePath(TAR_MODULES, PathKind::folder)), 1);
    const testing_support::ScratchFolder scratch;
    const auto plain = scratch.write("rain.txt", "It rains.\n");
    const auto archive =
        nativePath(testing_support::utf8OfPath(std::filesystem::canonical(TAR_ARCHIVES) / "notes.tar"));
    EXPECT_STREQ(firstLineOf(inArchive(*archive, "notes\\rain.txt")).text8(), "It rains.");
    EXPECT_STREQ(firstLineOf(*nativePath(testing_support::utf8OfPath(plain))).text8(), "It rains.");
    EXPECT_TRUE(firstLineOf(inArchive(*archive, "notes\\sun.txt")).isEmpty());
    FArchiveManager::getInstance()->removeUnusedRemovables();
}

} // namespace
} // namespace tessera::test
