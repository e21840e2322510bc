#include "persistence/streams/FMemoryStream.h"
#include "persistence/streams/FileOpenMode.h"
#include "persistence/urls/FUrl.h"
#include "persistence/urls/UrlMetaHandler.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tessera::test {
namespace {

// [urls]
// "note://ada/rain": the host says whose note, the file which one.
class NoteHandler : public FUrlHandler {
public:
    FResult isSupported(const char* key) const override {
        return key != nullptr && std::string_view(key) == "CanRead" ? kResultOk : kResultFalse;
    }
    FStream* openFile(FUrl& url, std::uint32_t, std::int32_t*) override {
        if (!(url.getHost() == "ada")) {
            return nullptr;
        }
        auto* stream = new FMemoryStream;
        stream->writeTextLine(url.getFile());
        stream->rewind();
        return stream;
    }
};

// While the program starts.
void enterScheme() {
    UrlMetaHandler::getInstance()->registerHandler("note", []() -> FUrlHandler* { return new NoteHandler; });
}

FString textBehind(const FStringRef& address) {
    FUrl url(address);
    FStream* const opened = UrlMetaHandler::getInstance()->openFile(url, FileOpenMode::read, nullptr);
    const auto stream = FRefPtr<FStream>::adopt(opened);
    FString text;
    if (stream) {
        stream->readTextLine(text);
    }
    return text;
}
// [urls]

TEST(UrlsExample, ASchemeOfOnesOwnIsOpened) {
    enterScheme();
    EXPECT_TRUE(textBehind("note://ada/rain") == "rain");
    EXPECT_TRUE(textBehind("NOTE://ada/rain") == "rain");
    EXPECT_TRUE(textBehind("note://bob/rain").isEmpty());
    EXPECT_TRUE(textBehind("nothing://ada/rain").isEmpty());
    EXPECT_TRUE(UrlMetaHandler::getInstance()->unregisterHandler("note"));
}

} // namespace
} // namespace tessera::test
