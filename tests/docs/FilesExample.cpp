#include "foundation/object/FRefPtr.h"
#include "persistence/files/FFastNamer.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "platform/NativePath.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tessera::test {
namespace {

// [files]
// "note.txt" or, where that is taken, "note-01.txt" and so on; the path is the new file's afterwards.
bool writeNote(FNPath& path, const FStringRef& text) {
    FFileSystem* const files = FFileSystem::getInstance();
    FFastNamer namer;
    if (files->fileExists(path) && !path.makeUnique(namer)) {
        return false;
    }
    FStream* const stream = files->createFile(path, FileOpenMode::write | FileOpenMode::createFolders, nullptr);
    if (stream == nullptr) {
        return false;
    }
    const bool written = stream->writeTextLine(text);
    files->closeStream(stream); // tells whoever watches, and releases the stream
    return written;
}
// [files]

// [walking a folder]
std::int64_t bytesOfNotes(const FPath& folder) {
    FFileSystem* const files = FFileSystem::getInstance();
    const auto entries = FRefPtr<FFileIterator>::adopt(files->newIterator(folder, false));
    std::int64_t bytes = 0;
    while (const FPath* entry = entries ? entries->next() : nullptr) { // lent, and good up to the next call
        FString extension;
        if (entry->isFile() && entry->getExtension(extension) && extension == "txt") {
            bytes += files->getFileSize(*entry);
        }
    }
    return bytes;
}
// [walking a folder]

class FilesExample : public testing::Test {
protected:
    FNPath folder() const {
        const std::u16string text = *platform::fromNativePath(scratch_.path().string());
        return FNPath(text.c_str(), PathKind::folder);
    }

    testing_support::ScratchFolder scratch_;
};

TEST_F(FilesExample, NotesGetNamesOfTheirOwn) {
    for (const char* name : {"note.txt", "note-01.txt"}) {
        FNPath path("note.txt", folder(), PathKind::file);
        ASSERT_TRUE(writeNote(path, "Rain"));
        EXPECT_STREQ(path.getName().text8(), name);
        EXPECT_EQ(scratch_.read(name), std::string("Rain\0", 5));
    }
}

TEST_F(FilesExample, AFolderIsWalked) {
    scratch_.write("a.txt", "12345");
    scratch_.write("b.txt", "123");
    scratch_.write("c.wav", "1");
    EXPECT_EQ(bytesOfNotes(folder()), 8);
    EXPECT_EQ(bytesOfNotes(FNPath("missing", folder(), PathKind::folder)), 0);
}

} // namespace
} // namespace tessera::test
