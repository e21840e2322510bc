#include "exportscripts/AudioExportScript.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tessera {
namespace {

std::string utf8Of(const FStringRef& text) {
    FString narrow(text);
    narrow.toMultiByte(CodePage::utf8);
    return narrow.text8();
}

FNPath pathOf(const std::filesystem::path& native) {
    FString text;
    text.assignUtf8(testing_support::utf8OfPath(native).c_str());
    return FNPath(text, PathKind::file);
}

AppVersion version(const char* text) {
    return parseVersion(text);
}

AudioExportScript parse(const std::string& executable) {
    return parseScriptText("<?xml version=\"1.0\"?><AudioExportPostProcess><Executable>" + executable +
                           "</Executable></AudioExportPostProcess>");
}

void expectEmpty(const AudioExportScript& script) {
    EXPECT_EQ(script.name, "");
    EXPECT_EQ(script.version, AppVersion());
    EXPECT_TRUE(script.path.getFullPath().isEmpty());
    EXPECT_TRUE(script.arguments.empty());
}

TEST(AudioExportScript, HasItsFileType) {
    const FFileType& type = audioExportScriptType();
    EXPECT_EQ(utf8Of(type.getName()), "Audio Export Post Process Script");
    EXPECT_EQ(utf8Of(type.getDosType()), "aepp");
    EXPECT_TRUE(type.getUnixType().isEmpty());
    EXPECT_TRUE(type.getMimeType().isEmpty());
    EXPECT_EQ(type.getMacType(), 0u);
}

TEST(AudioExportScript, AllFieldsAreRead) {
    const AudioExportScript script = parse("<Path>/opt/tessera/tessera</Path><Argument>\"$PATH\"</Argument>"
                                           "<Argument>-v</Argument><Name>Tessera Max</Name><Version>9.5.1</Version>");
    EXPECT_EQ(script.name, "Tessera Max");
    EXPECT_EQ(script.version, version("9.5.1.0"));
    EXPECT_EQ(utf8Of(script.path.getFullPath()), "\\opt\\tessera\\tessera");
    EXPECT_TRUE(script.path.isFile());
    EXPECT_EQ(script.arguments, (std::vector<std::string>{"\"$PATH\"", "-v"}));
}

TEST(AudioExportScript, TheLastOneWinsExceptForArguments) {
    const AudioExportScript script =
        parse("<Name>first</Name><Path>/a</Path><Version>1</Version><Argument>x</Argument>"
              "<Name>last</Name><Path>/b</Path><Version>2</Version><Argument>y</Argument>");
    EXPECT_EQ(script.name, "last");
    EXPECT_EQ(utf8Of(script.path.getFullPath()), "\\b");
    EXPECT_EQ(script.version, version("2"));
    EXPECT_EQ(script.arguments, (std::vector<std::string>{"x", "y"}));
}

TEST(AudioExportScript, ElementsWithoutTextAreAbsent) {
    const AudioExportScript script = parse("<Name>kept</Name><Name/><Name></Name><Argument></Argument><Argument/>"
                                           "<Argument><![CDATA[]]></Argument><Argument><inner>x</inner></Argument>"
                                           "<Path/><Version/>");
    EXPECT_EQ(script.name, "kept");
    EXPECT_TRUE(script.arguments.empty());
    EXPECT_EQ(script.version, AppVersion());
}

TEST(AudioExportScript, EntitiesAreProcessedAndBlanksKept) {
    const AudioExportScript script =
        parse("<Argument> a &amp; b </Argument><Argument>&quot;$PATH&quot;</Argument><Name>Gr&#252;n</Name>");
    EXPECT_EQ(script.arguments, (std::vector<std::string>{" a & b ", "\"$PATH\""}));
    EXPECT_EQ(script.name, "Gr\xC3\xBCn");
}

TEST(AudioExportScript, OtherElementsAttributesAndCaseAreIgnored) {
    const AudioExportScript script =
        parse("<name>small</name><NAME>large</NAME><Other>x</Other><Name attribute=\"y\">right</Name>");
    EXPECT_EQ(script.name, "right");
}

TEST(AudioExportScript, OnlyTheFirstOfTheOuterElementsIsRead) {
    const AudioExportScript second =
        parseScriptText("<AudioExportPostProcess><Executable><Name>first</Name></Executable>"
                        "<Executable><Name>second</Name></Executable></AudioExportPostProcess>"
                        "<AudioExportPostProcess><Executable><Name>third</Name></Executable>"
                        "</AudioExportPostProcess>");
    EXPECT_EQ(second.name, "first");
    const AudioExportScript behindOther = parseScriptText(
        "<Other/><AudioExportPostProcess><Other/><Executable><Name>found</Name></Executable></AudioExportPostProcess>");
    EXPECT_EQ(behindOther.name, "found");
}

TEST(AudioExportScript, WhatIsNoScriptIsEmpty) {
    for (const char* text : {"", "no XML", "<AudioExportPostProcess/>", "<AudioExportPostProcess><Executable/>",
                             "<AudioExportPostProcess><Executable></Executable></AudioExportPostProcess>",
                             "<Executable><Name>x</Name></Executable>", "\xFF\xFE<\0A"}) {
        SCOPED_TRACE(text);
        expectEmpty(parseScriptText(text));
    }
}

TEST(AudioExportScript, IsReadFromItsFile) {
    const testing_support::ScratchFolder folder;
    const auto file = folder.write("Gr\xC3\xBC\xC3\x9F"
                                   "e.aepp",
                                   "<AudioExportPostProcess><Executable><Name>Ostrey</Name></Executable>"
                                   "</AudioExportPostProcess>");
    EXPECT_EQ(parseScript(pathOf(file)).name, "Ostrey");
}

TEST(AudioExportScript, WhatCantBeReadIsEmpty) {
    const testing_support::ScratchFolder folder;
    expectEmpty(parseScript(pathOf(folder / "missing.aepp")));
    expectEmpty(parseScript(pathOf(folder.path())));
    expectEmpty(parseScript(FNPath()));
}

struct Acceptance {
    const char* name;
    const char* product;
    const char* version;
    bool accepted;
};

class Acceptances : public testing::TestWithParam<Acceptance> {};

TEST_P(Acceptances, FollowTheTables) {
    AudioExportScript script;
    script.name = GetParam().product;
    script.version = parseVersion(GetParam().version);
    EXPECT_EQ(isAccepted(script), GetParam().accepted);
}

const Acceptance kAcceptances[] = {
    {"PeerAtItsMinimum", "Tessera Max", "9.0.0", true},
    {"PeerJustBelow", "Tessera Max", "8.9.9.9", false},
    {"PeerWithoutVersion", "Tessera Max", "", false},
    {"PeerWithMajorAlone", "Tessera Lite", "9", true},
    {"PeerWithALetter", "Tessera Lite", "V9.1", true},
    {"PeerAbove", "Tessera Lite", "10.0", true},
    {"FirstHostAtItsMinimum", "Harrow Max", "8.5.10", true},
    {"FirstHostBelow", "Harrow", "8.5.9.99", false},
    {"FirstHostMid", "Harrow Mid", "8.6", true},
    {"FirstHostLite", "Harrow Lite", "9", true},
    {"SecondHostAtItsMinimum", "Ostrey", "7.1.20", true},
    {"SecondHostBelow", "Ostrey", "7.1.19", false},
    {"CaseCounts", "tessera max", "9.0.0", false},
    {"BlanksCount", "Tessera Max ", "9.0.0", false},
    {"UnknownName", "Tessera", "99", false},
    {"EmptyName", "", "99", false},
};

INSTANTIATE_TEST_SUITE_P(AudioExportScript, Acceptances, testing::ValuesIn(kAcceptances),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tessera
