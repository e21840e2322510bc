#include "platform/Files.h"

#include "platform/windows/FileWords.h"
#include "platform/windows/SystemPath.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <windows.h>

namespace tessera::platform {
namespace {

FileWords wordsOf(const FileOpenFlags& flags) {
    return fileWords(flags, FileDisposition::openExisting);
}

TEST(FileWords, AreThoseOfTheSystem) {
    EXPECT_EQ(wordsOf({}).access, 0u);
    EXPECT_EQ(wordsOf({.read = true}).access, 0x80000000u);
    EXPECT_EQ(wordsOf({.write = true}).access, 0x40000000u);
    EXPECT_EQ(wordsOf({.read = true, .write = true}).access, 0xC0000000u);
    EXPECT_EQ(wordsOf({.read = true, .write = true}).sharing, 0u);
    EXPECT_EQ(wordsOf({.shareRead = true}).sharing, 1u);
    EXPECT_EQ(wordsOf({.shareWrite = true}).sharing, 2u);
    EXPECT_EQ(wordsOf({.shareRead = true, .shareWrite = true}).sharing, 3u);
    EXPECT_EQ(wordsOf({}).attributes, 0x80u);
    EXPECT_EQ(wordsOf({.unbuffered = true}).attributes, 0x20000080u);
    EXPECT_EQ(wordsOf({.deleteOnClose = true}).attributes, 0x04000100u);
    EXPECT_EQ(wordsOf({.unbuffered = true, .deleteOnClose = true}).attributes, 0x24000100u);
    EXPECT_EQ(fileWords({}, FileDisposition::createNew).creation, 1u);
    EXPECT_EQ(fileWords({}, FileDisposition::createAlways).creation, 2u);
    EXPECT_EQ(fileWords({}, FileDisposition::openExisting).creation, 3u);
}

// Paths in the system's form.

TEST(SystemPath, GetsItsLongFormFromTheLimitOn) {
    const std::wstring root = L"C:\\";
    for (const std::size_t length : {std::size_t{247}, std::size_t{248}, std::size_t{259}, std::size_t{260}}) {
        const std::wstring path = root + std::wstring(length - root.size(), L'n');
        const std::u16string ours(path.begin(), path.end());
        EXPECT_EQ(systemPath(ours), length < 260 ? path : L"\\\\?\\" + path) << length;
        EXPECT_EQ(systemPath(ours, kLongFolderPath), length < 248 ? path : L"\\\\?\\" + path) << length;
    }
    const std::wstring share = L"\\\\server\\share\\" + std::wstring(260, L'n');
    EXPECT_EQ(systemPath(std::u16string(share.begin(), share.end())),
              L"\\\\?\\UNC\\server\\share\\" + std::wstring(260, L'n'));
}

TEST(SystemPath, HasNoSeparatorAtItsEndButARoots) {
    EXPECT_EQ(systemPath(u"C:"), L"C:\\");
    EXPECT_EQ(systemPath(u"C:\\\\"), L"C:\\");
    EXPECT_EQ(systemPath("C:/a/b/"), L"C:\\a\\b");
    EXPECT_EQ(systemPath(u"\\\\server\\share\\"), L"\\\\server\\share");
    EXPECT_EQ(systemPath(u"\\"), L"\\");
    EXPECT_EQ(systemPath(u""), L"");
    EXPECT_EQ(systemPath(std::u16string_view(u"C:\\a\0b", 6)), L"");
}

TEST(SystemPath, IsEmptyForWhatIsNoText) {
    EXPECT_EQ(systemPath("C:/\xC3\xA4"), L"C:\\\u00e4");
    EXPECT_EQ(systemPath("C:/\xE4"), L"");
    EXPECT_EQ(systemPath(std::string_view("C:/a\0b", 6)), L"");
}

TEST(SystemPath, LosesTheLongFormWhereThereIsAnother) {
    EXPECT_EQ(withoutLongPrefix(L"\\\\?\\C:\\a"), u"C:\\a");
    EXPECT_EQ(withoutLongPrefix(L"\\\\?\\UNC\\server\\share"), u"\\\\server\\share");
    EXPECT_EQ(withoutLongPrefix(L"C:\\a"), u"C:\\a");
    EXPECT_EQ(withoutLongPrefix(L""), u"");
    EXPECT_EQ(withoutLongPrefix(L"\\\\?\\"), u"\\\\?\\");
    // A volume without a drive: a relative path would be left.
    const std::u16string volume = u"\\\\?\\Volume{6F0A9C0E-0000-0000-0000-100000000000}\\a";
    EXPECT_EQ(withoutLongPrefix(std::wstring(volume.begin(), volume.end())), volume);
}

} // namespace
} // namespace tessera::platform
