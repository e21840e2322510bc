// What the tests of mounted archives share: an archive "a.pak" in a folder of its own, and paths into it.
#pragma once

#include "persistence/archives/FArchiveManager.h"
#include "persistence/archives/FPluginFileSystem.h"
#include "persistence/archives/FakeArchive.h"
#include "persistence/files/FFileIterator.h"
#include "persistence/files/FFileSystem.h"
#include "persistence/paths/FNPath.h"
#include "persistence/streams/FStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace tessera::test {

class ArchiveTest : public testing::Test {
protected:
    ArchiveTest() {
        scratch_.write("a.pak", "archive");
        state_.files = {{u"file.wav", "12345"},
                        {u"sub\\", ""},
                        {u"sub\\inner.wav", "123"},
                        {u"sub\\deep\\", ""},
                        {u"sub\\deep\\last", "1"}};
    }
    ~ArchiveTest() override {
        for (const char* name : {"a.pak", "b.pak"}) {
            archives_->removeArchive(FString("vfs"), keyOf(name), FArchiveManager::kForced);
        }
        FArchiveManager::setHostContext(nullptr);
    }

    // The native text of a file in the folder.
    FString keyOf(const std::string& name) const {
        const std::string native = testing_support::utf8OfPath(scratch_ / name);
        FString text;
        text.assignUtf8(native.c_str());
        text.replaceChars("/", '\\');
        return text;
    }
    FNPath native(const std::string& name) const { return FNPath(keyOf(name), PathKind::file); }
    // The path of what lies in an archive; of the archive itself when it is empty.
    FNPath in(const std::string& inner, const std::string& archive = "a.pak") const {
        FString text("vfs:\\\\");
        text.append(keyOf(archive));
        if (!inner.empty()) {
            text.append("\\\\");
            text.append(FString(inner.c_str()));
        }
        return FNPath(text, PathKind::file);
    }
    std::string read(FNPath path, std::uint32_t mode = FileOpenMode::read) const {
        FStream* stream = files_->openFile(path, mode, nullptr);
        if (stream == nullptr) {
            return "none";
        }
        char bytes[64];
        const std::int32_t count = stream->read(bytes, sizeof bytes);
        files_->closeStream(stream);
        return std::string(bytes, static_cast<std::size_t>(count));
    }
    FPluginFileSystem* mount() { return static_cast<FPluginFileSystem*>(archives_->getFileSystem(in(""))); }

    testing_support::ScratchFolder scratch_;
    FakeArchiveState state_;
    FakeSource source_{state_};
    FArchiveManager* archives_ = FArchiveManager::getInstance();
    FFileSystem* files_ = FFileSystem::getInstance();
};

} // namespace tessera::test
