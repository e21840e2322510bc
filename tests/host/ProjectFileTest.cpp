#include "host/HostFixture.h"

#include "host/model/ProjectFile.h"
#include "host/model/SafeSave.h"
#include "host/text/Text16.h"
#include "shell/hostapi/IProjectOpener.h"
#include "support/PageExample.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>

namespace tessera::host {
namespace {

std::string contentOf(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The steps on the real file system, until the one that fails: it does half of its work, and from then on nothing
// works, as after a crash.
class CrashingSteps final : public SaveSteps {
public:
    explicit CrashingSteps(int stepsBefore) : left_(stepsBefore) {}

    std::string writeAndFlush(const std::string& path, std::string_view content) override {
        const bool crashes = left_-- <= 0;
        const std::string reason =
            platformSaveSteps().writeAndFlush(path, crashes ? content.substr(0, content.size() / 2) : content);
        return crashes ? "crashed" : reason;
    }
    std::string rename(const std::string& from, const std::string& to) override {
        return left_-- <= 0 ? "crashed" : platformSaveSteps().rename(from, to);
    }
    void remove(const std::string&) override {}

private:
    int left_;
};

class ProjectFileTest : public HostFixture {};

TEST_F(ProjectFileTest, WhatWasSavedIsOpenedAgain) {
    makeSound("outside \xC3\xA4.wav", 5000);
    std::filesystem::create_directories(path("project/Audio"));
    makeSound("project/Audio/inside.flac", 4000, 2, 8000, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    makeProject({path("outside \xC3\xA4.wav"), path("project/Audio/inside.flac")});
    ASSERT_EQ(host().trimEvent(1, 0.1, 0.3), "");
    ASSERT_EQ(host().restrictEvent(1, Restrictions::kEnvelopes), "");
    NewEventPlace notes;
    notes.start = 12.25;
    notes.track = 2;
    ASSERT_EQ(host().addNotes(notes), "");
    host().transport().cycleLeft().set(1.5);
    host().transport().cycleRight().set(2.75);
    ASSERT_EQ(host().saveProject(""), "");
    ASSERT_EQ(host().closeProject(), "");
    host().transport().cycleLeft().set(0);

    ASSERT_EQ(host().openProject(path("project/project.tesxproject")), "");
    EXPECT_EQ(host().project()->folderPath(), path("project"));
    ASSERT_EQ(host().project()->events().size(), 3U);
    EXPECT_EQ(event(1)->name(), "outside \xC3\xA4.wav");
    EXPECT_EQ(event(1)->ownClip()->path(), path("outside \xC3\xA4.wav"));
    EXPECT_EQ(event(1)->place().offset, 0.1);
    EXPECT_EQ(event(1)->place().length, 0.3);
    EXPECT_EQ(event(1)->restrictions(), Restrictions::kEnvelopes);
    EXPECT_EQ(event(2)->ownClip()->path(), path("project/Audio/inside.flac"));
    EXPECT_EQ(event(2)->place().start, 5);
    EXPECT_FALSE(event(3)->isAudio());
    EXPECT_EQ(event(3)->place().start, 12.25);
    EXPECT_EQ(event(3)->track()->name(), "Track 2");
    EXPECT_EQ(host().transport().cycleLeft().seconds(), 1.5);
    EXPECT_EQ(host().transport().cycleRight().seconds(), 2.75);
    EXPECT_EQ(host().undo(), "there is nothing to undo");
}

TEST_F(ProjectFileTest, NamesOfAnyScriptAreSavedAndOpenedAgain) {
    const std::string folder = "\u97f3\u697d \U0001f3b5";
    const std::string inside = folder + "/Audio/\u0416 \u00e4.wav";
    std::filesystem::create_directories(testing_support::pathOfUtf8(path(folder + "/Audio")));
    makeSound(inside, 10);
    const std::string outside = makeSound("\u6f22 \U0001f3b6.flac", 20, 1, 1000, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    const std::string project = path(folder + "/\u97f3.tesxproject");
    ASSERT_EQ(host().newProject(path(folder), {path(inside), outside}), "");
    ASSERT_EQ(host().saveProject(project), "");
    ASSERT_EQ(host().closeProject(), "");
    ASSERT_EQ(host().openProject(project), "");
    ASSERT_EQ(host().project()->events().size(), 2U);
    EXPECT_EQ(event(1)->ownClip()->path(), path(inside));
    EXPECT_EQ(event(1)->name(), "\u0416 \u00e4.wav");
    EXPECT_EQ(event(2)->ownClip()->path(), outside);
    EXPECT_EQ(samplesOf(outside).size(), 20U);
    std::ifstream stored(testing_support::pathOfUtf8(project), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stored), std::istreambuf_iterator<char>()};
    EXPECT_NE(text.find("\"Audio/\u0416 \u00e4.wav\""), text.npos) << text;
}

TEST_F(ProjectFileTest, AFolderThatWasMovedStillFindsItsOwnSounds) {
    std::filesystem::create_directories(path("project/Audio"));
    makeSound("project/Audio/inside.wav", 10);
    makeProject({path("project/Audio/inside.wav")});
    ASSERT_EQ(host().saveProject(""), "");
    ASSERT_EQ(host().closeProject(), "");
    std::filesystem::rename(path("project"), path("elsewhere"));
    ASSERT_EQ(host().openProject(path("elsewhere/project.tesxproject")), "");
    EXPECT_EQ(event(1)->ownClip()->path(), path("elsewhere/Audio/inside.wav"));
}

TEST_F(ProjectFileTest, AProjectThatIsOpenedHasAFolderForItsAudio) {
    makeProject({makeSound("a.wav", 10)});
    std::filesystem::create_directories(path("elsewhere"));
    const std::string file = path("elsewhere/p.tesxproject");
    ASSERT_EQ(host().saveProject(file), "");
    ASSERT_EQ(host().closeProject(), "");
    ASSERT_EQ(host().openProject(file), "");
    EXPECT_TRUE(std::filesystem::is_directory(path("elsewhere/Audio")));
    EXPECT_EQ(output().find("warning"), std::string::npos) << output();
}

TEST_F(ProjectFileTest, AProjectIsOpenedWithAWarningWhereItsAudioHasNoFolder) {
    makeProject({makeSound("a.wav", 10)});
    std::filesystem::create_directories(path("elsewhere"));
    std::ofstream(path("elsewhere/Audio")) << "in the way";
    const std::string file = path("elsewhere/p.tesxproject");
    ASSERT_EQ(host().saveProject(file), "");
    ASSERT_EQ(host().closeProject(), "");
    EXPECT_EQ(host().openProject(file), "");
    EXPECT_NE(output().find("edits can't come back into this project"), std::string::npos) << output();
}

TEST_F(ProjectFileTest, ACrashAtAnyStepLosesNeitherOldNorNew) {
    makeProject({makeSound("a.wav", 1000)});
    const std::string file = path("project/p.tesxproject");
    ASSERT_EQ(host().saveProject(file), "");
    const std::string old = contentOf(file);
    ASSERT_EQ(host().moveEvent(1, 77), "");
    for (int step = 0; step < 2; ++step) {
        SCOPED_TRACE(step);
        CrashingSteps steps(step);
        const Complaint complaint = saveProject(*host().project(), host().transport(), file, steps);
        EXPECT_NE(complaint.find("can't be saved"), std::string::npos) << complaint;
        EXPECT_EQ(contentOf(file), old);
        auto other = makeApplication();
        EXPECT_EQ(other->openProject(file), "");
        EXPECT_EQ(event(1)->place().start, 77) << "the new state is still in the open project";
    }
    CrashingSteps afterAll(2);
    EXPECT_EQ(saveProject(*host().project(), host().transport(), file, afterAll), "");
    auto other = makeApplication();
    ASSERT_EQ(other->openProject(file), "");
    EXPECT_EQ(other->project()->eventByNumber(1)->place().start, 77);
}

TEST_F(ProjectFileTest, AFailedSaveLeavesNothingBehind) {
    makeProject({});
    std::filesystem::create_directories(path("taken/inside"));
    const Complaint complaint = host().saveProject(path("taken"));
    EXPECT_NE(complaint.find("can't be saved"), std::string::npos) << complaint;
    EXPECT_FALSE(std::filesystem::exists(path("taken.part")));
    EXPECT_TRUE(std::filesystem::is_directory(path("taken/inside")));
}

TEST_F(ProjectFileTest, ASaveLeavesFilesOfSimilarNamesAlone) {
    makeProject({});
    std::vector<std::string> others;
    for (const char* end : {".new", ".part"}) {
        for (const char* name : {"project/p.tesxproject", "taken"}) {
            others.push_back(path(name + std::string(end)));
            std::ofstream(others.back()) << "of the user";
        }
    }
    std::filesystem::create_directories(path("taken/inside"));
    EXPECT_EQ(host().saveProject(path("project/p.tesxproject")), "");
    EXPECT_NE(host().saveProject(path("taken")), "");
    for (const std::string& other : others) {
        EXPECT_EQ(contentOf(other), "of the user") << other;
    }
    EXPECT_FALSE(std::filesystem::exists(path("taken.2.part")));
}

TEST_F(ProjectFileTest, ASaveTakesThePlaceOfNoFileThatIsNoProject) {
    const std::string sound = makeSound("a.wav", 1000);
    makeProject({sound});
    const std::string recorded = contentOf(sound);
    const Complaint complaint = host().saveProject(sound);
    EXPECT_NE(complaint.find("is there already and is no project"), std::string::npos) << complaint;
    EXPECT_EQ(contentOf(sound), recorded);
    EXPECT_EQ(host().project()->filePath(), "");
}

TEST_F(ProjectFileTest, AProjectOfAnyNameIsSavedAgain) {
    makeProject({makeSound("a.wav", 1000)});
    ASSERT_EQ(host().saveProject(path("song.xml")), "");
    EXPECT_EQ(host().saveProject(""), "");
    EXPECT_EQ(host().saveProject(path("song.xml")), "");
    EXPECT_EQ(host().saveProject(path("song.tesxproject")), "");
    EXPECT_EQ(host().saveProject(path("song.tesxproject")), "");
}

TEST_F(ProjectFileTest, NotesMayLastAnyTimeThatCanBeOpenedAgain) {
    makeProject({});
    for (const double length : {-1.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        NewEventPlace place;
        place.length = length;
        EXPECT_NE(host().addNotes(place), "") << length;
    }
    NewEventPlace place;
    place.length = 0;
    EXPECT_EQ(host().addNotes(place), "");
    ASSERT_EQ(host().saveProject(""), "");
    EXPECT_EQ(makeApplication()->openProject(path("project/project.tesxproject")), "");
}

// A document with one project that holds these members.
std::string documentWith(const std::string& members, int version = 2) {
    return "<TesxProject><rootObjects><root name=\"project\" ID=\"1\"/></rootObjects>"
           "<obj class=\"HostProject\" ID=\"1\"><int name=\"version\" value=\"" +
           std::to_string(version) + "\"/>" + members + "</obj></TesxProject>";
}

// One with one track that holds this event.
std::string documentWithEvent(const std::string& members) {
    return documentWith("<list name=\"tracks\" type=\"obj\"><obj class=\"HostTrack\" ID=\"2\">"
                        "<list name=\"events\" type=\"obj\"><obj class=\"HostEvent\" ID=\"3\">" +
                        members + "</obj></list></obj></list>");
}

struct BrokenRow {
    const char* name;
    std::string content;
    const char* message;
};

TEST_F(ProjectFileTest, ABrokenFileIsRefusedWithAReason) {
    makeProject({makeSound("a.wav", 1000)});
    ASSERT_EQ(host().saveProject(""), "");
    const std::shared_ptr<Project> before = host().project();
    const std::string place = "<float name=\"start\" value=\"0\"/><float name=\"length\" value=\"1\"/>";
    const std::string whole = documentWith("");
    const BrokenRow rows[] = {
        {"empty", "", "is no project"},
        {"text", "hello", "is no project"},
        {"cut", whole.substr(0, whole.size() / 2), "is no project"},
        {"foreign", "<Song></Song>", "is no project"},
        {"without a project", "<TesxProject></TesxProject>", "is no project"},
        {"another class",
         "<TesxProject><rootObjects><root name=\"project\" ID=\"1\"/></rootObjects>"
         "<obj class=\"CmString\" ID=\"1\"></obj></TesxProject>",
         "is no project"},
        {"older", documentWith("", 1), "another version"},
        {"newer", documentWith("", 3), "another version"},
        {"missing sound",
         documentWith("<list name=\"pool\" type=\"obj\"><obj class=\"HostClip\" ID=\"2\">"
                      "<string name=\"path\" value=\"no.wav\"/></obj></list>"),
         "there is no file"},
        {"clip without a path",
         documentWith("<list name=\"pool\" type=\"obj\"><obj class=\"HostClip\" ID=\"2\"></obj></list>"), "pool"},
        {"pool of strings",
         documentWith("<list name=\"pool\" type=\"obj\"><obj class=\"CmString\" ID=\"2\"></obj></list>"), "pool"},
        {"track of text",
         documentWith("<list name=\"tracks\" type=\"obj\"><obj class=\"CmString\" ID=\"2\"></obj></list>"), "track"},
        {"no times", documentWithEvent(""), "times"},
        {"negative length",
         documentWithEvent("<float name=\"start\" value=\"0\"/><float name=\"length\" value=\"-1\"/>"), "times"},
        {"not a number", documentWithEvent("<float name=\"start\" value=\"nan\"/><float name=\"length\" value=\"1\"/>"),
         "times"},
        {"clip that isn't there", documentWithEvent(place + "<obj name=\"clip\" ID=\"77\"/>"), "clip"},
        {"clip of another class", documentWithEvent(place + "<obj name=\"clip\" ID=\"2\"/>"), "clip"},
    };
    for (const BrokenRow& row : rows) {
        std::ofstream(path("broken.tesxproject")) << row.content;
        const Complaint complaint = host().openProject(path("broken.tesxproject"));
        EXPECT_NE(complaint.find(row.message), std::string::npos) << row.name << ": " << complaint;
        EXPECT_EQ(host().project(), before) << row.name;
    }
    EXPECT_NE(host().openProject(path("missing.tesxproject")).find("can't be read"), std::string::npos);
}

TEST_F(ProjectFileTest, AFolderIsRefusedInPlaceOfAFile) {
    makeProject({});
    ASSERT_EQ(host().saveProject(""), "");
    const std::shared_ptr<Project> before = host().project();
    EXPECT_NE(host().openProject(path("project")).find("can't be read"), std::string::npos);
    EXPECT_NE(host().openProject(path("project/")).find("can't be read"), std::string::npos);
    EXPECT_EQ(host().project(), before);
}

// The file takes no room: nothing is written to it.
TEST_F(ProjectFileTest, AFileLargerThanADocumentCanBeIsRefusedUnread) {
    const std::string file = path("large.tesxproject");
    std::ofstream(file) << documentWith("");
    for (const std::uintmax_t size : {std::uintmax_t{1} << 31U, std::uintmax_t{1} << 32U}) {
        std::filesystem::resize_file(file, size);
        const Complaint complaint = host().openProject(file);
        EXPECT_NE(complaint.find("is larger than"), std::string::npos) << complaint;
    }
}

// IDs are addresses: a document is told by the order in which they first appear.
std::string renumbered(const std::string& document) {
    static const std::string before = "ID=\"";
    std::map<std::string, std::size_t> numbers;
    std::string result;
    std::size_t done = 0;
    for (std::size_t found = document.find(before); found != std::string::npos; found = document.find(before, done)) {
        const std::size_t start = found + before.size();
        const std::size_t end = document.find('"', start);
        const std::size_t number =
            numbers.emplace(document.substr(start, end - start), numbers.size() + 1).first->second;
        result.append(document, done, start - done).append(std::to_string(number));
        done = end;
    }
    return result + document.substr(done);
}

TEST_F(ProjectFileTest, TheDocumentNamesAClipOnceAndItsEventsRefer) {
    std::filesystem::create_directories(path("project/Audio"));
    makeSound("project/Audio/\xC3\xBC.wav", 4000);
    makeProject({path("project/Audio/\xC3\xBC.wav")});
    ASSERT_EQ(host().addSound(path("project/Audio/\xC3\xBC.wav"), {8.5, 1.0, 0.25, 1}), "");
    ASSERT_EQ(host().saveProject(""), "");
    EXPECT_EQ(renumbered(contentOf(path("project/project.tesxproject"))),
              "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
              "<TesxProject>\r\n"
              "   <rootObjects>\r\n"
              "      <root name=\"project\" ID=\"1\"/>\r\n"
              "   </rootObjects>\r\n"
              "\r\n"
              "   <obj class=\"HostProject\" ID=\"1\">\r\n"
              "      <int name=\"version\" value=\"2\"/>\r\n"
              "      <float name=\"cycleLeft\" value=\"0\"/>\r\n"
              "      <float name=\"cycleRight\" value=\"0\"/>\r\n"
              "      <list name=\"pool\" type=\"obj\">\r\n"
              "         <obj class=\"HostClip\" ID=\"2\">\r\n"
              "            <string name=\"path\" value=\"Audio/\xC3\xBC.wav\" wide=\"true\"/>\r\n"
              "         </obj>\r\n"
              "      </list>\r\n"
              "      <list name=\"tracks\" type=\"obj\">\r\n"
              "         <obj class=\"HostTrack\" ID=\"3\">\r\n"
              "            <string name=\"name\" value=\"Track 1\"/>\r\n"
              "            <list name=\"events\" type=\"obj\">\r\n"
              "               <obj class=\"HostEvent\" ID=\"4\">\r\n"
              "                  <string name=\"name\" value=\"\xC3\xBC.wav\" wide=\"true\"/>\r\n"
              "                  <float name=\"start\" value=\"0\"/>\r\n"
              "                  <float name=\"length\" value=\"4\"/>\r\n"
              "                  <float name=\"offset\" value=\"0\"/>\r\n"
              "                  <int name=\"restrictions\" value=\"0\"/>\r\n"
              "                  <obj name=\"clip\" ID=\"2\"/>\r\n"
              "               </obj>\r\n"
              "               <obj class=\"HostEvent\" ID=\"5\">\r\n"
              "                  <string name=\"name\" value=\"\xC3\xBC.wav\" wide=\"true\"/>\r\n"
              "                  <float name=\"start\" value=\"8.5\"/>\r\n"
              "                  <float name=\"length\" value=\"0.25\"/>\r\n"
              "                  <float name=\"offset\" value=\"1\"/>\r\n"
              "                  <int name=\"restrictions\" value=\"0\"/>\r\n"
              "                  <obj name=\"clip\" ID=\"2\"/>\r\n"
              "               </obj>\r\n"
              "            </list>\r\n"
              "         </obj>\r\n"
              "      </list>\r\n"
              "   </obj>\r\n"
              "\r\n"
              "</TesxProject>\r\n");
    const auto reopened = makeApplication();
    ASSERT_EQ(reopened->openProject(path("project/project.tesxproject")), "");
    EXPECT_EQ(reopened->project()->eventByNumber(1)->part(), reopened->project()->eventByNumber(2)->part());
}

TEST_F(ProjectFileTest, TheExampleOfThePageIsReadAndWrittenAsItStands) {
    const std::string text = testing_support::pageDocument("project.tesxproject");
    std::filesystem::create_directories(path("project/Audio"));
    makeSound("project/Audio/take.wav", 6000);
    std::ofstream(path("project/project.tesxproject"), std::ios::binary) << text;
    ASSERT_EQ(host().openProject(path("project/project.tesxproject")), "");
    EXPECT_EQ(event(1)->place().start, 1.5);
    EXPECT_EQ(event(1)->place().offset, 2);
    EXPECT_FALSE(event(2)->isAudio());
    ASSERT_EQ(host().saveProject(""), "");
    EXPECT_EQ(renumbered(contentOf(path("project/project.tesxproject"))), text);
}

TEST_F(ProjectFileTest, ATextThatNoDocumentCanHoldIsToldBeforeAnythingIsWritten) {
    makeProject({makeSound("a.wav", 1000)});
    const std::string file = path("project/p.tesxproject");
    ASSERT_EQ(host().saveProject(file), "");
    const std::string old = contentOf(file);
    host().project()->addTrack(std::string(2040, '<'));
    const Complaint complaint = host().saveProject(file);
    EXPECT_NE(complaint.find("too long"), std::string::npos) << complaint;
    EXPECT_EQ(contentOf(file), old);
}

TEST_F(ProjectFileTest, UnsavedChangesAreNotThrownAwayForAnotherProject) {
    makeProject({makeSound("a.wav", 1000)});
    ASSERT_EQ(host().saveProject(path("first.tesxproject")), "");
    ASSERT_EQ(host().moveEvent(1, 5), "");
    EXPECT_NE(host().openProject(path("other.tesxproject")).find("aren't saved"), std::string::npos);
    EXPECT_NE(host().newProject(path("other"), {}).find("aren't saved"), std::string::npos);
    EXPECT_EQ(event(1)->place().start, 5);
}

TEST_F(ProjectFileTest, ANewProjectNeverTakesThePlaceOfAnother) {
    makeProject({makeSound("a.wav", 1000)});
    ASSERT_EQ(host().saveProject(""), "");
    ASSERT_EQ(host().closeProject(), "");
    for (const char* folder : {"project", "project/", "project/."}) {
        const Complaint complaint = host().newProject(path(folder), {});
        EXPECT_NE(
            complaint.find("holds a project already; open it with: open \"" + path("project/project.tesxproject")),
            std::string::npos)
            << complaint;
        EXPECT_EQ(host().project(), nullptr) << folder;
    }
}

TEST_F(ProjectFileTest, AFolderNamedWithAClosingSlashIsTheSameFolder) {
    ASSERT_EQ(host().newProject(path("song/"), {}), "");
    EXPECT_EQ(host().project()->folderPath(), path("song"));
    ASSERT_EQ(host().saveProject(""), "");
    EXPECT_TRUE(std::filesystem::exists(path("song/song.tesxproject")));
    EXPECT_FALSE(std::filesystem::exists(path("song/.tesxproject")));
}

TEST_F(ProjectFileTest, AProjectWithoutANameIsSeenToo) {
    std::filesystem::create_directories(path("song"));
    std::ofstream(path("song/.tesxproject")) << "kept";
    EXPECT_NE(host().newProject(path("song"), {}).find("holds a project already"), std::string::npos);
}

TEST_F(ProjectFileTest, AGuestOpensProjectsByTheirFile) {
    makeProject({makeSound("a.wav", 1000)});
    const std::string file = path("first.tesxproject");
    ASSERT_EQ(host().saveProject(file), "");
    ASSERT_EQ(host().closeProject(), "");
    const FRefPtr<IProjectOpener> opener = queryFor<IProjectOpener>(host().context().unknown());
    const FRefPtr<IUrlFactory> url = service<IUrlFactory>();
    url->setPath(toText16(file)->c_str(), 0);
    EXPECT_EQ(opener->open(url.get(), 0), kResultOk);
    const std::shared_ptr<Project> opened = host().project();
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(opener->open(url.get(), 0), kResultOk);
    EXPECT_EQ(host().project(), opened) << "already open: only becomes active";
    url->setPath(u"/no/such/project", 0);
    EXPECT_EQ(opener->open(url.get(), 0), kResultFailure);
    url->setPath(toText16(path("project"))->c_str(), 0);
    EXPECT_EQ(opener->open(url.get(), 0), kResultFailure) << "a folder";
    EXPECT_EQ(opener->open(nullptr, 0), kInvalidArgument);
    EXPECT_EQ(host().project(), opened);
}

} // namespace
} // namespace tessera::host
