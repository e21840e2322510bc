#include "persistence/urls/UrlMetaHandler.h"

#include "persistence/files/FFileSystem.h"
#include "persistence/streams/FMemoryStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "persistence/urls/FUrl.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace tessera::test {
namespace {

// Gives the text of the file part back.
class EchoHandler : public FUrlHandler {
public:
    static inline int made = 0;

    EchoHandler() { ++made; }
    std::uint16_t getDefaultPort() const override { return 7; }
    FResult isSupported(const char* key) const override {
        return key != nullptr && std::strcmp(key, "CanRead") == 0 ? kResultOk : kResultFalse;
    }
    FStream* openFile(FUrl& url, std::uint32_t, std::int32_t*) override {
        auto* stream = new FMemoryStream;
        stream->write(url.getFile().text8(), url.getFile().length());
        stream->rewind();
        return stream;
    }
};

class UrlMetaHandlerTest : public testing::Test {
protected:
    UrlMetaHandlerTest() {
        EchoHandler::made = 0;
        handlers_->registerHandler("echo", []() -> FUrlHandler* { return new EchoHandler; });
    }
    ~UrlMetaHandlerTest() override { handlers_->unregisterHandler("echo"); }

    UrlMetaHandler* handlers_ = UrlMetaHandler::getInstance();
};

TEST_F(UrlMetaHandlerTest, KnowsFileFromTheStart) {
    const FUrlHandler* file = handlers_->getHandler("file");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(handlers_->getHandler("FILE"), file);
    EXPECT_EQ(handlers_->getDefaultPort(FString("file")), 0);
    for (const char* key : {"CanRead", "CanWrite", "CanIterate"}) {
        EXPECT_EQ(handlers_->isSupported(FUrl(FString("file:///x")), key), kResultOk) << key;
    }
    EXPECT_EQ(handlers_->isSupported(FUrl(FString("file:///x")), "CanFly"), kResultFalse);
    EXPECT_EQ(handlers_->isSupported(FUrl(FString("file:///x")), nullptr), kResultFalse);
}

TEST_F(UrlMetaHandlerTest, MakesAHandlerWhenItIsFirstAskedFor) {
    EXPECT_EQ(EchoHandler::made, 0);
    EXPECT_NE(handlers_->getHandler("echo"), nullptr);
    EXPECT_NE(handlers_->getHandler("Echo"), nullptr);
    EXPECT_EQ(EchoHandler::made, 1);
}

TEST_F(UrlMetaHandlerTest, AnotherHandlerTakesThePlaceOfTheFirst) {
    EXPECT_NE(handlers_->getHandler("echo"), nullptr);
    handlers_->registerHandler("ECHO", []() -> FUrlHandler* { return nullptr; });
    EXPECT_EQ(handlers_->getHandler("echo"), nullptr);
    EXPECT_TRUE(handlers_->unregisterHandler("echo"));
    EXPECT_FALSE(handlers_->unregisterHandler("echo"));
}

TEST_F(UrlMetaHandlerTest, CanDoWhatAnyOfItsHandlersCan) {
    const FUrlHandler& all = *handlers_;
    for (const char* key : {"CanRead", "CanWrite", "CanIterate"}) {
        EXPECT_EQ(all.isSupported(key), kResultOk) << key;
    }
    EXPECT_EQ(all.isSupported("CanFly"), kResultFalse);
    EXPECT_EQ(all.isSupported(nullptr), kResultFalse);
    const auto none = FRefPtr<UrlMetaHandler>::adopt(new UrlMetaHandler);
    none->unregisterHandler("file");
    EXPECT_EQ(static_cast<FUrlHandler&>(*none).isSupported("CanRead"), kResultFalse);
    none->registerHandler("echo", []() -> FUrlHandler* { return new EchoHandler; });
    EXPECT_EQ(static_cast<FUrlHandler&>(*none).isSupported("CanRead"), kResultOk);
    EXPECT_EQ(static_cast<FUrlHandler&>(*none).isSupported("CanWrite"), kResultFalse);
}

TEST_F(UrlMetaHandlerTest, APortOfZeroBecomesTheHandlers) {
    FUrl url;
    url.setProtocol(FString("echo"));
    EXPECT_EQ(url.getPort(), 7);
    url.setPort(99);
    url.setProtocol(FString("echo"));
    EXPECT_EQ(url.getPort(), 99);
    url.setPort(0);
    url.setProtocol(FString("nobody"));
    EXPECT_EQ(url.getPort(), 0);
}

TEST_F(UrlMetaHandlerTest, TheFileSystemOpensThroughTheHandler) {
    FUrl url(FString("echo://host/hello"));
    EXPECT_TRUE(url.getHandler().isEmpty());
    FFileSystem* files = FFileSystem::getInstance();
    FStream* stream = files->openFile(url, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    char bytes[5];
    EXPECT_EQ(stream->read(bytes, 5), 5);
    EXPECT_EQ(std::memcmp(bytes, "hello", 5), 0);
    files->closeStream(stream);
    EXPECT_TRUE(url.getHandler() == "echo");
    EXPECT_EQ(files->createFile(url, FileOpenMode::write, nullptr), nullptr);
    EXPECT_EQ(files->newIterator(url, false), nullptr);
}

TEST_F(UrlMetaHandlerTest, WithoutAHandlerThereIsNothing) {
    FUrl url(FString("nobody://host/x"));
    EXPECT_EQ(handlers_->getHandler("nobody"), nullptr);
    EXPECT_EQ(handlers_->isSupported(url, "CanRead"), kResultFalse);
    FFileSystem* files = FFileSystem::getInstance();
    EXPECT_EQ(files->openFile(url, FileOpenMode::read, nullptr), nullptr);
    EXPECT_EQ(files->createFile(url, FileOpenMode::write, nullptr), nullptr);
    EXPECT_EQ(files->newIterator(url, false), nullptr);
    EXPECT_FALSE(files->fileExists(url));
    EXPECT_FALSE(files->rename(url, FString("y")));
    EXPECT_EQ(files->getFileSize(url), -1);
}

TEST_F(UrlMetaHandlerTest, TheFileHandlerOpensNativeFiles) {
    const testing_support::ScratchFolder scratch;
    scratch.write("a", "x");
    FUrl url(FString(("file://" + testing_support::slashTextOf(scratch / "a")).c_str()));
    FStream* stream = handlers_->openFile(url, FileOpenMode::read, nullptr);
    ASSERT_NE(stream, nullptr);
    stream->release();
    EXPECT_TRUE(url.getHandler() == "file");
    FUrl made(FString(("file://" + testing_support::slashTextOf(scratch / "b")).c_str()));
    stream = handlers_->createFile(made, FileOpenMode::write, nullptr);
    ASSERT_NE(stream, nullptr);
    stream->release();
    EXPECT_TRUE(scratch.has("b"));
}

} // namespace
} // namespace tessera::test
