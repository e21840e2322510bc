// The file system of the process, a folder to work in, and what listeners heard of changes.
#pragma once

#include "foundation/messages/FMessage.h"
#include "persistence/files/FNFileSystem.h"
#include "persistence/files/FileChangeHub.h"
#include "persistence/files/PathSupport.h"
#include "persistence/streams/FFileStream.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera {

// Collects the change notices as "kind path" and "kind path < old path".
class Notices : public CmObject {
public:
    std::vector<std::string> received;

    std::int32_t receiveMessage(FMessage* message) override {
        std::string line = message->getName();
        line += " " + std::to_string(message->getInt(FStringRef("kind")));
        line += " " + nameUnder(*message, "change");
        if (message->has("other")) {
            line += " < " + nameUnder(*message, "other");
        }
        received.push_back(line);
        return 0;
    }

private:
    static std::string nameUnder(FMessage& message, const char* key) {
        const auto* path = cmCast<FNPath>(message.getObject(FStringRef(key)));
        return path != nullptr ? utf8Of(path->getName()) : "no path";
    }
};

class FNFileSystemTest : public testing::Test {
protected:
    FNFileSystemTest() { FileChangeHub::getInstance(true)->join(listener()); }
    ~FNFileSystemTest() override { FileChangeHub::getInstance(true)->leave(listener()); }

    IBaseUnknown* listener() { return static_cast<IUpdateTarget*>(&notices_); }
    const std::vector<std::string>& notices() const { return notices_.received; }

    FNPath path(const std::string& name) const { return pathOf(scratch_ / name); }
    FNPath folder(const std::string& name) const { return folderOf(scratch_ / name); }

    // As a program writes a file; false when it can't be made.
    bool save(const std::string& name, const std::string& bytes, std::uint32_t mode = FileOpenMode::write) {
        FNPath file = path(name);
        FStream* stream = files_.createFile(file, mode, nullptr);
        if (stream == nullptr) {
            return false;
        }
        const auto size = static_cast<std::int32_t>(bytes.size());
        EXPECT_EQ(stream->write(bytes.data(), size), size);
        files_.closeStream(stream);
        return true;
    }

    testing_support::ScratchFolder scratch_;
    FNFileSystem& files_ = static_cast<FNFileSystem&>(*FFileSystem::getInstance());

private:
    Notices notices_;
};

} // namespace tessera
