#include "peer/EditorCommand.h"

#include <gtest/gtest.h>

namespace tessera::peer {
namespace {

using Words = std::vector<std::string>;

EditorCommand parsed(const char* text) {
    std::string problem;
    std::optional<EditorCommand> command = EditorCommand::parse(text, &problem);
    EXPECT_TRUE(command) << text << ": " << problem;
    return command ? *command : EditorCommand();
}

std::string problemOf(const char* text) {
    std::string problem;
    EXPECT_FALSE(EditorCommand::parse(text, &problem)) << text;
    return problem;
}

TEST(EditorCommand, PlaceholdersAreFilledWordByWord) {
    const EditorCommand command = parsed("sox -R {in} {out} reverse");
    EXPECT_EQ("sox", command.program());
    EXPECT_FALSE(command.editsInPlace());
    EXPECT_EQ((Words{"-R", "/a b/in.wav", "/c/out.wav", "reverse"}), command.arguments("/a b/in.wav", "/c/out.wav"));
}

TEST(EditorCommand, PlaceholdersMayStandInsideAWord) {
    EXPECT_EQ((Words{"--from=/i", "--to=/o"}), parsed("edit --from={in} --to={out}").arguments("/i", "/o"));
}

TEST(EditorCommand, AFilledPathIsNotFilledAgain) {
    EXPECT_EQ((Words{"/{out}/{in}", "/o"}), parsed("cp {in} {out}").arguments("/{out}/{in}", "/o"));
}

TEST(EditorCommand, QuotesAndBackslashesKeepWordsTogether) {
    EXPECT_EQ((Words{"a b", "c\"d", "e f", "", "{x}", "/i", "/o"}),
              parsed("run 'a b' \"c\\\"d\" e\\ f '' {x} {in} {out}").arguments("/i", "/o"));
}

TEST(EditorCommand, BackslashesOfPathsStandForThemselves) {
    const EditorCommand command = parsed(R"("C:\Program Files\edit.exe" --to=D:\out {in} '\\server\in' {out})");
    EXPECT_EQ(R"(C:\Program Files\edit.exe)", command.program());
    EXPECT_EQ((Words{R"(--to=D:\out)", "/i", R"(\\server\in)", "/o"}), command.arguments("/i", "/o"));
}

TEST(EditorCommand, ItsTextIsReadAgainAsTheSameWordsAndHoldsDoubleQuotesOnlyIfAWordDoes) {
    EXPECT_EQ("sox -R {in} {out} reverse", parsed(" sox  -R {in}\t{out} reverse ").text());
    EXPECT_EQ(R"('C:\Program Files\edit.exe' {in} {out} 'D:\work\')",
              parsed(R"("C:\Program Files\edit.exe" {in} {out} D:\work\)").text());
    for (const char* text : {"run 'a b' \"c d\" e\\ f '' {x} {in} {out}", "it\\'s \"that's {file}\" \"'\"",
                             R"(a\\b "\\server\{file}" 'tab	and\' c\\)", "say '\"' \"\\\"\" {file}"}) {
        const EditorCommand command = parsed(text);
        const EditorCommand again = parsed(command.text().c_str());
        EXPECT_EQ(command.program(), again.program()) << text;
        EXPECT_EQ(command.arguments("/i", "/o"), again.arguments("/i", "/o")) << text;
        EXPECT_EQ(std::string_view(text).starts_with("say"), command.text().find('"') != std::string::npos) << text;
    }
}

TEST(EditorCommand, TheInPlaceFormFillsTheEditedFile) {
    const EditorCommand command = parsed("window-editor {file}");
    EXPECT_TRUE(command.editsInPlace());
    EXPECT_EQ((Words{"/copy.wav"}), command.arguments("/copy.wav", "/copy.wav"));
}

TEST(EditorCommand, IncompleteCommandsAreRefusedWithTheReason) {
    EXPECT_EQ("the editor command is empty", problemOf(""));
    EXPECT_EQ("the editor command is empty", problemOf("  \t "));
    EXPECT_EQ("the editor command ends inside a quotation", problemOf("sox 'x {in} {out}"));
    const std::string placeholders =
        "the editor command needs {in} and {out}, or {file} for an editor that works in place";
    EXPECT_EQ(placeholders, problemOf("sox"));
    EXPECT_EQ(placeholders, problemOf("sox {in}"));
    EXPECT_EQ(placeholders, problemOf("sox {out}"));
    EXPECT_EQ(placeholders, problemOf("sox {in} {out} {file}"));
    EXPECT_EQ(placeholders, problemOf("{in} {out}"));
}

} // namespace
} // namespace tessera::peer
