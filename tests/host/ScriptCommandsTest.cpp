#include "host/HostFixture.h"

#include "host/program/ScriptCommands.h"

#include <cctype>
#include <filesystem>
#include <stdexcept>

namespace tessera::host {
namespace {

class ScriptCommandsTest : public HostFixture {
protected:
    Complaint run(const std::string& line) { return script_.run(line); }

    ScriptCommands script_{host()};
};

TEST_F(ScriptCommandsTest, ASessionFromASoundFileToTheExport) {
    makeSound("my take.wav", 5000);
    EXPECT_EQ(run("new \"" + path("my song") + "\" \"" + path("my take.wav") + "\""), "");
    EXPECT_EQ(run("trim 1 1 2.5"), "");
    EXPECT_EQ(run("add \"" + path("my take.wav") + "\" at 10 offset 2 length 1 track 2"), "");
    EXPECT_EQ(run("notes at 3 length 2"), "");
    EXPECT_EQ(run("move 3 12.5"), "");
    EXPECT_EQ(run("select 1 3"), "");
    EXPECT_EQ(host().selection().selectedEvents().size(), 2U);
    EXPECT_EQ(run("select range 1 2"), "");
    EXPECT_EQ(run("select all"), "");
    EXPECT_EQ(run("select none"), "");
    EXPECT_EQ(run("restrict 1 effects envelopes"), "");
    EXPECT_EQ(run("remove 2"), "");
    EXPECT_EQ(run("undo"), "");
    EXPECT_EQ(run("redo"), "");
    EXPECT_EQ(run("export \"" + path("mix.wav") + "\""), "");
    EXPECT_EQ(run("save"), "");
    EXPECT_EQ(run("show"), "");
    EXPECT_EQ(run("close"), "");
    EXPECT_EQ(run("open \"" + path("my song/my song.tesxproject") + "\""), "");
    EXPECT_EQ(run("idle 0"), "");
    EXPECT_EQ(run("  # nothing"), "");
    EXPECT_FALSE(script_.hasQuit());
    EXPECT_EQ(run("quit"), "");
    EXPECT_TRUE(script_.hasQuit());
    EXPECT_TRUE(std::filesystem::exists(path("mix.wav")));
    EXPECT_TRUE(std::filesystem::is_directory(path("my song/Audio")));
    EXPECT_TRUE(misuses().empty());
}

TEST_F(ScriptCommandsTest, ShowTellsWhatIsThere) {
    makeSound("a.wav", 5000, 2, 1000);
    ASSERT_EQ(run("new \"" + path("song") + "\" \"" + path("a.wav") + "\""), "");
    ASSERT_EQ(run("trim 1 1 2.5"), "");
    ASSERT_EQ(run("restrict 1 stretched"), "");
    ASSERT_EQ(run("select 1"), "");
    ASSERT_EQ(run("show"), "");
    EXPECT_EQ(output(), "project \"" + path("song") +
                            "\", 2.500 s, 1 clip in the pool\n"
                            "  Track 1\n"
                            "  * 1  0.000 to 2.500 s  a.wav, plays \"" +
                            path("a.wav") +
                            "\" from 1.000 s "
                            "(WAV, 16 bit, 2 channels, 1000 Hz, 5000 frames), stretched\n"
                            "  undo: \"Trim event\", redo: -\n");
}

struct ErrorRow {
    const char* line;
    const char* message;
};

TEST_F(ScriptCommandsTest, AWrongLineIsToldOnOneLineThatStartsSmall) {
    makeProject({makeSound("a.wav", 5000)});
    const ErrorRow rows[] = {
        {"dance", "no command \"dance\""},
        {"remove", "too few or too many words; use: remove EVENT"},
        {"open a b", "too few or too many words; use: open [FILE]"},
        {"close now", "too few or too many words; use: close"},
        {"open \"a", "a quote isn't closed"},
        {"select", "too few"},
        {"select 9", "no event 9; the project has 1"},
        {"select 0", "no event 0"},
        {"select one", "\"one\" is no event"},
        {"select 1.5", "\"1.5\" is no event"},
        {"select range 1", "a range has two ends"},
        {"select range a b", "\"a\" is no number"},
        {"select range 3 2", "is empty"},
        {"select range 90 91", "no audio event lies between"},
        {"trim 1 4 2", "doesn't lie in the clip"},
        {"trim 1 -1 2", "doesn't lie in the clip"},
        {"trim 1 0 0", "doesn't lie in the clip"},
        {"trim 7 0 1", "no event 7"},
        {"trim 1 nan 1", "no number"},
        {"move 1 soon", "\"soon\" is no number"},
        {"move 1 1,5", "\"1,5\" is no number"},
        {"remove x", "no number"},
        {"restrict 1 loud", "\"loud\" is no kind of processing"},
        {"add missing.wav", "there is no file"},
        {"add missing.wav at", "\"at\" needs a number"},
        {"add missing.wav near 2", "\"near\" isn't known"},
        {"notes length -1", "notes can't last -1.000 s"},
        {"notes track 7", "no track 7; the next new one is 2"},
        {"wait soon", "no number"},
        {"wait 0", "didn't come back"},
        {"open \"\"", "the path \"\" can't be used"},
        {"add \"\"", "the path \"\" can't be used"},
        {"export \"\"", "the path \"\" can't be used"},
        {"undo", "nothing to undo"},
        {"redo", "nothing to redo"},
        {"edit", "isn't there; load the module"},
        {"start", "no module is loaded"},
        {"stop", "no module runs"},
    };
    for (const ErrorRow& row : rows) {
        const Complaint complaint = run(row.line);
        EXPECT_NE(complaint.find(row.message), std::string::npos) << row.line << ": " << complaint;
        EXPECT_EQ(complaint.find('\n'), std::string::npos) << row.line;
        ASSERT_FALSE(complaint.empty()) << row.line;
        EXPECT_FALSE(std::isupper(static_cast<unsigned char>(complaint.front()))) << complaint;
    }
}

TEST_F(ScriptCommandsTest, ANewProjectNeedsANameAndItsSoundsDo) {
    EXPECT_NE(run("new \"\"").find("the path \"\" can't be used"), std::string::npos);
    EXPECT_NE(run("new \"" + path("song") + "\" \"\"").find("the path \"\" can't be used"), std::string::npos);
    EXPECT_EQ(host().project(), nullptr);
}

TEST_F(ScriptCommandsTest, AnExceptionInACommandBecomesItsComplaint) {
    host().core()->note = [](const std::string&) { throw std::runtime_error("no paper"); };
    EXPECT_EQ(run("recent"), "the command was broken off (no paper)");
    host().core()->note = [](const std::string&) {};
    EXPECT_EQ(run("recent"), "");
}

TEST_F(ScriptCommandsTest, EveryCommandThatNeedsAProjectSaysSo) {
    for (const char* line : {"save", "close", "add a.wav", "notes", "remove 1", "move 1 1", "trim 1 0 1", "restrict 1",
                             "select 1", "select all", "select range 0 1", "edit", "export a.wav"}) {
        EXPECT_NE(run(line).find("no project is open"), std::string::npos) << line;
    }
}

TEST_F(ScriptCommandsTest, ASemicolonInTheNameIsWarnedOfBeforeTheEdit) {
    makeSound("a;b.wav", 100);
    ASSERT_EQ(run("new \"" + path("song") + "\" \"" + path("a;b.wav") + "\""), "");
    run("select 1");
    EXPECT_NE(run("edit"), "");
    EXPECT_NE(output().find("warning: \"a;b.wav\" holds a \";\""), std::string::npos) << output();
}

TEST_F(ScriptCommandsTest, HelpListsTheCommands) {
    run("help");
    for (const char* word : {"new FOLDER", "select EVENT", "wait [S]", "quit"}) {
        EXPECT_NE(output().find(word), std::string::npos) << word;
    }
}

} // namespace
} // namespace tessera::host
