#include "workflow/HostText.h"

#include "support/host/FakeHost.h"

#include <gtest/gtest.h>

namespace tessera {
namespace {

using test::FakeFile;
using test::FakeHost;
using test::makeFake;

TEST(HostText, GoesToUtf8AndBack) {
    EXPECT_EQ(utf8Of(u"a\u00E4\u20AC\U0001F600"), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(wideOf("a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"), u"a\u00E4\u20AC\U0001F600");
}

TEST(HostText, EmptyAndNullTextsAreEmpty) {
    EXPECT_EQ(utf8Of(nullptr), "");
    EXPECT_EQ(utf8Of(u""), "");
    EXPECT_EQ(wideOf(""), u"");
    EXPECT_EQ(pathOf(nullptr), "");
}

TEST(HostText, BytesThatAreNoUtf8AreRefusedWhole) {
    EXPECT_EQ(wideOf("/tmp/\xC3"), u"");
    EXPECT_EQ(wideOf("/tmp/\xFF.wav"), u"");
    EXPECT_EQ(wideOf("\xED\xA0\x80"), u"");
}

TEST(HostText, ALoneSurrogateBecomesTheReplacementCharacter) {
    const char16_t text[] = {u'a', 0xD800, u'b', 0};
    EXPECT_EQ(utf8Of(text), "a\xEF\xBF\xBD"
                            "b");
}

TEST(HostText, ReadsPathAndNameOfAFile) {
    FakeHost host;
    const auto file = makeFake<FakeFile>(host.store, host.script, u"/a b/t\u00E4ke 1.wav");
    EXPECT_EQ(pathOf(file.get()), "/a b/t\xC3\xA4ke 1.wav");
    EXPECT_EQ(widePathOf(file.get()), u"/a b/t\u00E4ke 1.wav");
    EXPECT_EQ(nameOf(file.get()), u"t\u00E4ke 1.wav");
}

// A host that forgets the end of the text.
class EndlessFile final : public test::FakeObject<UnusedSlots<IHostFile>> {
public:
    void path(char16_t* buffer) override { std::fill_n(buffer, kHostPathUnits, u'x'); }
    FResult setPath(const char16_t*, std::int32_t) override { return kResultOk; }
    void name(char16_t* buffer) override { path(buffer); }
    FResult append(const char16_t*, std::int32_t) override { return kResultOk; }
    FResult makeUnique() override { return kResultOk; }
    FResult clone(void**) override { return kResultFailure; }
};

TEST(HostText, ATextWithoutAnEndStopsAtTheBuffersEnd) {
    EXPECT_EQ(widePathOf(makeFake<EndlessFile>().get()).size(), 1023u);
}

} // namespace
} // namespace tessera
