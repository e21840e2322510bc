#include "platform/windows/ShellRequest.h"

#include "platform/DesktopOpener.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace tessera::platform {
namespace {

using Parts = std::pair<std::wstring, std::wstring>;

Parts partsOf(const std::optional<ShellRequest>& request) {
    return request ? Parts{request->file, request->parameters} : Parts{L"none", L""};
}

const Parts kNone = {L"none", L""};

TEST(ShellRequest, ADocumentIsOpenedByItsPath) {
    EXPECT_EQ(partsOf(documentRequest(u"C:\\My Songs\\\u03A9.wav")), (Parts{L"C:\\My Songs\\\u03A9.wav", L""}));
    EXPECT_EQ(partsOf(documentRequest(u"\\\\server\\share\\a.wav")), (Parts{L"\\\\server\\share\\a.wav", L""}));
    EXPECT_EQ(partsOf(documentRequest(u"C:")), (Parts{L"C:\\", L""}));
    const std::u16string deep = u"C:\\" + std::u16string(300, u'd') + u"\\a.wav";
    EXPECT_EQ(partsOf(documentRequest(deep)).first, std::wstring(deep.begin(), deep.end())) << "without a prefix";
}

TEST(ShellRequest, AFileIsSelectedInItsFolder) {
    EXPECT_EQ(partsOf(selectionRequest(u"C:\\a b, c\\d.wav")),
              (Parts{L"explorer.exe", L"/select,\"C:\\a b, c\\d.wav\""}));
}

TEST(ShellRequest, AnAddressGoesAsItIs) {
    EXPECT_EQ(partsOf(addressRequest("https://example.org/?a=b&c=\xC3\xBC")),
              (Parts{L"https://example.org/?a=b&c=\u00FC", L""}));
    EXPECT_EQ(partsOf(addressRequest("mailto:me@example.org")), (Parts{L"mailto:me@example.org", L""}));
}

TEST(ShellRequest, WhatCouldBeTakenForAProgramIsRefused) {
    for (const char16_t* path : {u"", u"calc.exe", u"folder\\calc.exe", u"C:calc.exe", u"\\calc.exe", u"-x"}) {
        EXPECT_EQ(partsOf(documentRequest(path)), kNone);
        EXPECT_EQ(partsOf(selectionRequest(path)), kNone);
    }
    for (const char* address : {"", "calc.exe", "C:\\calc.exe", "--help", "://x", "1a:b"}) {
        EXPECT_EQ(partsOf(addressRequest(address)), kNone) << address;
    }
    EXPECT_EQ(partsOf(addressRequest(std::string_view("ab:c\0d", 6))), kNone);
    EXPECT_FALSE(openDocument(u"calc.exe"));
    EXPECT_FALSE(showInFolder(u""));
    EXPECT_FALSE(openAddress("calc.exe"));
}

TEST(ShellRequest, ADocumentThatIsntThereIsntOpened) {
    const testing_support::ScratchFolder scratch;
    EXPECT_FALSE(openDocument((scratch / "missing.txt").u16string()));
}

} // namespace
} // namespace tessera::platform
